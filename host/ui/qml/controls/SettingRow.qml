// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** A label and its value. With actionable, the row can be pressed to change it. */
AbstractButton {
    id: control

    property string value
    property string iconName
    property bool actionable: false

    Layout.fillWidth: true
    implicitHeight: Math.max(56, content.implicitHeight + 16)
    enabled: true
    hoverEnabled: actionable
    focusPolicy: actionable ? Qt.StrongFocus : Qt.NoFocus
    Accessible.role: actionable ? Accessible.Button : Accessible.StaticText
    Accessible.name: value === "" ? text : qsTr("%1: %2").arg(text).arg(value)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: RowLayout {
        id: content

        spacing: Theme.gap

        Icon {
            visible: control.iconName !== ""
            name: control.iconName
            color: Theme.secondaryText
            Layout.leftMargin: Theme.gap
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.leftMargin: control.iconName === "" ? Theme.gap : 0
            Layout.rightMargin: control.actionable ? 0 : Theme.gap
            spacing: 2

            TextLabel {
                text: control.text
                Layout.fillWidth: true
            }
            TextLabel {
                visible: control.value !== ""
                text: control.value
                color: Theme.secondaryText
                font.pixelSize: 14
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                Layout.fillWidth: true
            }
        }
        Icon {
            visible: control.actionable
            name: "next"
            directional: true
            size: 20
            color: Theme.secondaryText
            Layout.rightMargin: Theme.gap
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
