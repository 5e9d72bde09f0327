// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import VexaMaps 1.0

/** A label and its value. With actionable, the row can be pressed to change it. */
AbstractButton {
    id: control

    property string value
    property string iconName
    property bool actionable: false
    // Not its own width: that may change while the layouts are being made.
    readonly property bool roomy: Window.width >= 900

    Layout.fillWidth: true
    implicitHeight: Math.max(roomy ? Theme.touch : 56, content.implicitHeight + 16)
    enabled: true
    hoverEnabled: actionable
    focusPolicy: actionable ? Qt.StrongFocus : Qt.NoFocus
    Accessible.role: actionable ? Accessible.Button : Accessible.StaticText
    Accessible.name: value === "" ? text : qsTr("%1: %2").arg(text).arg(value)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    // No layouts: they would have to find their height again whenever a value changes.
    contentItem: Item {
        id: content

        implicitHeight: words.height

        Icon {
            id: icon

            visible: control.iconName !== ""
            name: control.iconName
            color: Theme.secondaryText
            anchors.left: parent.left
            anchors.leftMargin: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
        }
        // The value stands below the label, or, where there is room, at the other end of the line.
        Item {
            id: words

            height: control.roomy ? Math.max(label.height, worth.height)
                                  : worth.visible ? worth.y + worth.height : label.height
            anchors.left: icon.visible ? icon.right : parent.left
            anchors.leftMargin: Theme.gap
            anchors.right: arrow.visible ? arrow.left : parent.right
            anchors.rightMargin: Theme.gap
            anchors.verticalCenter: parent.verticalCenter

            TextLabel {
                id: label

                text: control.text
                y: control.roomy ? (parent.height - height) / 2 : 0
                width: control.roomy && worth.visible ? parent.width * 0.5 : parent.width
                anchors.left: parent.left
            }
            TextLabel {
                id: worth

                visible: control.value !== ""
                text: control.value
                color: Theme.secondaryText
                font.pixelSize: control.roomy ? Theme.body : 14
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                horizontalAlignment: control.roomy ? Text.AlignRight : Text.AlignLeft
                y: control.roomy ? (parent.height - height) / 2 : label.height + 2
                width: control.roomy ? parent.width * 0.5 - Theme.gap : parent.width
                anchors.right: parent.right
            }
        }
        Icon {
            id: arrow

            visible: control.actionable
            name: "next"
            directional: true
            size: 20
            color: Theme.secondaryText
            anchors.right: parent.right
            anchors.rightMargin: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
        }
    }
    background: Rectangle {
        anchors.fill: parent
        anchors.margins: 4
        radius: 8
        color: control.actionable && (control.hovered || control.down) ? Theme.hovered
                                                                        : "transparent"
        FocusRing {
            control: control
            radius: 8
        }
    }
}
