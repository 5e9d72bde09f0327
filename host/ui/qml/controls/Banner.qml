// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VexaMaps 1.0

/** A sentence across the page, with at most one thing to do about it. */
Rectangle {
    id: banner

    property string text
    property bool isError: false
    property string iconName: isError ? "warning" : "info"
    property string actionText
    property bool closable: false
    readonly property color letters: isError ? Theme.danger : Theme.accent

    signal triggered
    signal closed

    implicitHeight: Math.max(56, words.height + 24)
    radius: Theme.radius
    color: isError ? Theme.dangerTint : Theme.accentTint
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Icon {
        id: icon

        name: banner.iconName
        color: banner.letters
        anchors.left: parent.left
        anchors.leftMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
    }
    Column {
        id: words

        spacing: Theme.unit
        anchors.left: icon.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.rightMargin: banner.closable ? 60 : Theme.gap
        anchors.verticalCenter: parent.verticalCenter

        TextLabel {
            width: parent.width
            text: banner.text
            font.pixelSize: 15
        }
        PushButton {
            visible: banner.actionText !== ""
            text: banner.actionText
            onClicked: banner.triggered()
        }
    }
    IconButton {
        visible: banner.closable
        text: qsTr("Close the message")
        iconName: "close"
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        onClicked: banner.closed()
    }
}
