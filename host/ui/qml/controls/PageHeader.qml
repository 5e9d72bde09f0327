// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** The head of a page: a way back where there is one, the title, and what can be done. */
RowLayout {
    id: header

    property string title
    property string subtitle
    /** Said below the title; the subtitle, above it, is the way that leads here. */
    property string note
    property bool canGoBack: false
    property string backText: qsTr("Back")
    default property alias actions: buttons.data

    signal back

    spacing: 4
    Layout.fillHeight: false
    Layout.minimumHeight: 72

    IconButton {
        visible: header.canGoBack
        Layout.leftMargin: 4
        text: header.backText
        iconName: "back"
        directional: true
        onClicked: header.back()
    }
    ColumnLayout {
        Layout.fillWidth: true
        Layout.leftMargin: header.canGoBack ? 0 : Theme.gap
        Layout.topMargin: Theme.unit
        Layout.bottomMargin: Theme.unit
        Layout.fillHeight: false
        spacing: 0

        TextLabel {
            visible: header.subtitle !== ""
            text: header.subtitle
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            Layout.fillWidth: true
        }
        TextLabel {
            text: header.title
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
        }
        TextLabel {
            visible: header.note !== ""
            text: header.note
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            Layout.fillWidth: true
        }
    }
    RowLayout {
        id: buttons

        Layout.rightMargin: Theme.unit
        Layout.fillHeight: false
        spacing: 4
    }
}
