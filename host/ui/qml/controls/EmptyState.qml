// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VexaMaps 1.0

/** What a page shows instead of an empty list: why it is empty, and what to do about it. */
Column {
    id: state

    property string iconName
    property string title
    property string text
    property string actionText
    property string actionIcon
    property bool busy: false

    signal triggered

    spacing: 12

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 96
        height: 96
        radius: 48
        color: Theme.accentTint

        Icon {
            anchors.centerIn: parent
            name: state.iconName
            size: 48
            color: Theme.accent
        }
    }
    TextLabel {
        width: parent.width
        text: state.title
        font.pixelSize: Theme.heading
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
    }
    TextLabel {
        width: parent.width
        text: state.text
        color: Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
    }
    BusyMark {
        visible: state.busy
        anchors.horizontalCenter: parent.horizontalCenter
    }
    PushButton {
        visible: state.actionText !== "" && !state.busy
        primary: true
        text: state.actionText
        iconName: state.actionIcon
        width: Math.min(implicitWidth, parent.width)
        anchors.horizontalCenter: parent.horizontalCenter
        onClicked: state.triggered()
    }
}
