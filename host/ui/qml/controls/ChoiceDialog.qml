// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** One of several: a choice is made with one press. */
SheetDialog {
    id: dialog

    /** Maps with "text" and "value". */
    property var choices: []
    property var current

    signal chosen(var value)

    Repeater {
        model: dialog.choices

        RadioButton {
            id: choice

            readonly property bool isCurrent: modelData.value === dialog.current

            text: modelData.text
            checked: isCurrent
            focus: isCurrent
            hoverEnabled: true
            implicitHeight: Math.max(Theme.touch, label.implicitHeight + 16)
            Layout.fillWidth: true
            Accessible.role: Accessible.RadioButton
            Accessible.name: text
            Accessible.checkable: true
            Accessible.checked: checked
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            onClicked: {
                dialog.chosen(modelData.value)
                dialog.close()
            }

            indicator: Rectangle {
                width: 24
                height: 24
                radius: 12
                x: Theme.mirrored ? choice.width - width - 8 : 8
                y: (choice.height - height) / 2
                color: "transparent"
                border.width: 2
                border.color: choice.checked ? Theme.accent : Theme.secondaryText

                Rectangle {
                    visible: choice.checked
                    anchors.centerIn: parent
                    width: 12
                    height: 12
                    radius: 6
                    color: Theme.accent
                }
            }
            contentItem: TextLabel {
                id: label

                text: choice.text
                leftPadding: Theme.mirrored ? 0 : 40
                rightPadding: Theme.mirrored ? 40 : 0
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
            background: Rectangle {
                radius: 8
                color: choice.hovered ? Theme.hovered : "transparent"
                FocusRing {
                    control: choice
                    radius: 8
                }
            }
        }
    }
}
