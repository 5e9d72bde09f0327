// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** Asks for the address of another content server. */
SheetDialog {
    id: dialog

    property bool refused: false

    function ask() {
        address.text = session.baseUri
        refused = false
        open()
        address.forceActiveFocus()
        address.selectAll()
    }

    function take() {
        refused = !session.setBaseUri(address.text)
        if (refused)
            address.forceActiveFocus()
        else
            close()
    }

    heading: qsTr("Content server")

    TextLabel {
        text: qsTr("The address that maps are downloaded from.")
        color: Theme.secondaryText
        Layout.fillWidth: true
    }
    TextField {
        id: address

        objectName: "address"
        Layout.fillWidth: true
        implicitHeight: Theme.touch
        font.pixelSize: Theme.body
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentText
        selectByMouse: true
        inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase
        Accessible.role: Accessible.EditableText
        Accessible.name: dialog.heading
        onAccepted: dialog.take()
        onTextChanged: dialog.refused = false

        background: Rectangle {
            radius: Theme.radius
            color: Theme.background
            border.width: address.activeFocus ? 2 : 1
            border.color: dialog.refused ? Theme.danger
                                         : address.activeFocus ? Theme.accent : Theme.line
        }
    }
    TextLabel {
        visible: dialog.refused
        text: qsTr("This is no http address.")
        color: Theme.danger
        Layout.fillWidth: true
    }
    RowLayout {
        spacing: Theme.unit
        Layout.topMargin: Theme.gap

        PushButton {
            text: qsTr("Cancel")
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            onClicked: dialog.close()
        }
        PushButton {
            text: qsTr("Use this server")
            primary: true
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            onClicked: dialog.take()
        }
    }
}
