// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import VexaMaps 1.0

/** One entry of the bar that leads to the pages: upright in the tab bar, lying in the side bar. */
AbstractButton {
    id: control

    property string iconName
    property bool lying: false
    /** A small number on the icon; 0 for none. */
    property int badge: 0
    property bool current: false
    readonly property color letters: current ? Theme.accent : Theme.secondaryText

    implicitHeight: lying ? Theme.touch : 64
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.PageTab
    Accessible.name: badge > 0 ? qsTr("%1 (%2)").arg(text).arg(badge) : text
    Accessible.selectable: true
    Accessible.selected: current
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        Rectangle {
            visible: !control.lying
            anchors.centerIn: icon
            width: 56
            height: 28
            radius: 14
            color: Theme.accentTint
            opacity: control.current ? 1 : 0
        }
        Icon {
            id: icon

            name: control.iconName
            color: control.letters
            anchors.left: control.lying ? parent.left : undefined
            anchors.leftMargin: Theme.gap
            anchors.verticalCenter: control.lying ? parent.verticalCenter : undefined
            anchors.horizontalCenter: control.lying ? undefined : parent.horizontalCenter
            anchors.top: control.lying ? undefined : parent.top
            anchors.topMargin: 10
        }
        Text {
            id: label

            text: control.text
            color: control.lying && control.current ? Theme.accent : control.letters
            font.pixelSize: control.lying ? Theme.body : Theme.small - 1
            font.weight: control.current ? Font.DemiBold : Font.Normal
            wrapMode: control.lying ? Text.Wrap : Text.NoWrap
            fontSizeMode: control.lying ? Text.FixedSize : Text.HorizontalFit
            minimumPixelSize: 9
            horizontalAlignment: control.lying ? Text.AlignLeft : Text.AlignHCenter
            anchors.left: control.lying ? icon.right : parent.left
            anchors.leftMargin: control.lying ? Theme.gap : 2
            anchors.right: parent.right
            anchors.rightMargin: control.lying ? 40 : 2
            anchors.verticalCenter: control.lying ? parent.verticalCenter : undefined
            anchors.bottom: control.lying ? undefined : parent.bottom
            anchors.bottomMargin: 8
        }
        Rectangle {
            visible: control.badge > 0
            width: Math.max(20, number.implicitWidth + 10)
            height: 20
            radius: 10
            color: Theme.accent
            anchors.left: control.lying ? undefined : icon.right
            anchors.leftMargin: -10
            anchors.right: control.lying ? parent.right : undefined
            anchors.rightMargin: Theme.gap
            anchors.verticalCenter: control.lying ? parent.verticalCenter : icon.top
            anchors.verticalCenterOffset: control.lying ? 0 : 3

            Text {
                id: number

                anchors.centerIn: parent
                text: control.badge.toLocaleString(Qt.locale(), "f", 0)
                color: Theme.accentText
                font.pixelSize: 12
                font.weight: Font.DemiBold
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.lying && control.current ? Theme.accentTint
                                               : control.hovered ? Theme.hovered : "transparent"
        FocusRing {
            control: control
        }
    }
}
