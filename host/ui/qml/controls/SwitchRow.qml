// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** A setting that is on or off; the whole row can be pressed. */
Switch {
    id: control

    property string explanation
    /** What is so; a press only asks for a change, with asked(). */
    property bool value: false

    signal asked(bool value)

    Layout.fillWidth: true
    implicitHeight: Math.max(56, contentItem.implicitHeight + 16)
    hoverEnabled: true
    leftPadding: Theme.gap
    rightPadding: Theme.gap
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.description: explanation
    Accessible.checkable: true
    Accessible.checked: checked
    Keys.onReturnPressed: toggleByKey()
    Keys.onEnterPressed: toggleByKey()

    onToggled: asked(checked)

    function toggleByKey() {
        toggle()
        asked(checked)
    }

    // A plain binding would be gone after the first press.
    Binding {
        target: control
        property: "checked"
        value: control.value
    }

    // No layouts: they would have to find their height again with their width.
    contentItem: Item {
        implicitHeight: words.height

        Column {
            id: words

            spacing: 2
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.rightMargin: 52 + Theme.gap
            anchors.verticalCenter: parent.verticalCenter

            TextLabel {
                text: control.text
                width: parent.width
            }
            TextLabel {
                visible: control.explanation !== ""
                text: control.explanation
                color: Theme.secondaryText
                font.pixelSize: 14
                width: parent.width
            }
        }
    }
    indicator: Rectangle {
        width: 52
        height: 32
        radius: 16
        x: Theme.mirrored ? Theme.gap : control.width - width - Theme.gap
        y: (control.height - height) / 2
        color: control.checked ? Theme.accent : "transparent"
        border.width: control.checked ? 0 : 2
        border.color: Theme.secondaryText

        Rectangle {
            readonly property real inset: (parent.height - height) / 2

            width: control.checked ? 24 : 16
            height: width
            radius: width / 2
            y: inset
            x: control.checked !== Theme.mirrored ? parent.width - width - inset : inset
            color: control.checked ? Theme.accentText : Theme.secondaryText
        }
    }
    background: Rectangle {
        anchors.fill: parent
        anchors.margins: 4
        radius: 8
        color: control.hovered ? Theme.hovered : "transparent"
        FocusRing {
            control: control
            radius: 8
        }
    }
}
