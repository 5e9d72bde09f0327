// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** Asks before something is done; emits accepted(). */
SheetDialog {
    id: dialog

    property string text
    property string acceptText
    property bool dangerous: false

    TextLabel {
        text: dialog.text
        Layout.fillWidth: true
        Layout.bottomMargin: Theme.gap
    }
    RowLayout {
        spacing: Theme.unit

        PushButton {
            text: qsTr("Cancel")
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.fillHeight: true
            onClicked: dialog.reject()
        }
        PushButton {
            text: dialog.acceptText
            primary: true
            dangerous: dialog.dangerous
            focus: true
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.fillHeight: true
            onClicked: dialog.accept()
        }
    }
}
