// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import VexaMaps 1.0

/** A button that is only an icon; its text is spoken, and shown while the mouse rests on it. */
AbstractButton {
    id: control

    property string iconName
    property bool directional: false
    property color color: Theme.text

    implicitWidth: Theme.touch
    implicitHeight: Theme.touch
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: control.iconName
            directional: control.directional
            color: control.color
        }
    }
    background: Rectangle {
        radius: width / 2
        color: control.hovered || control.down ? Theme.hovered : "transparent"
        FocusRing {
            control: control
            radius: width / 2
        }
    }

    ToolTip.visible: hovered && text !== ""
    ToolTip.delay: 600
    ToolTip.text: text
}
