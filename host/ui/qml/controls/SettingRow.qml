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

        implicitHeight: control.roomy ? Math.max(words.height, beside.height) : words.height

        Icon {
            id: icon

            visible: control.iconName !== ""
            name: control.iconName
            color: Theme.secondaryText
            anchors.left: parent.left
            anchors.leftMargin: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
        }
        Column {
            id: words

            spacing: 2
            anchors.left: icon.visible ? icon.right : parent.left
            anchors.leftMargin: Theme.gap
            anchors.right: beside.visible ? parent.horizontalCenter
                                          : arrow.visible ? arrow.left : parent.right
            anchors.rightMargin: beside.visible ? 0 : Theme.gap
            anchors.verticalCenter: parent.verticalCenter

            TextLabel {
                text: control.text
                width: parent.width
            }
            TextLabel {
                visible: control.value !== "" && !control.roomy
                text: control.value
                color: Theme.secondaryText
                font.pixelSize: 14
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                width: parent.width
            }
        }
        // Where there is room, the value stands at the other end of the line.
        TextLabel {
            id: beside

            visible: control.value !== "" && control.roomy
            text: control.value
            color: Theme.secondaryText
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            horizontalAlignment: Text.AlignRight
            anchors.left: parent.horizontalCenter
            anchors.leftMargin: Theme.gap
            anchors.right: arrow.visible ? arrow.left : parent.right
            anchors.rightMargin: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
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
