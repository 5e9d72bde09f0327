// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import VexaMaps 1.0

/** A button with words. One of a page is primary; one that destroys is dangerous. */
Button {
    id: control

    property string iconName
    property bool primary: false
    property bool dangerous: false
    readonly property color mainColor: dangerous ? Theme.danger : Theme.accent
    readonly property color letters: primary ? (dangerous ? Theme.dangerText : Theme.accentText)
                                             : mainColor

    implicitHeight: Math.max(Theme.touch, contentItem.implicitHeight + 16)
    leftPadding: Theme.gap
    rightPadding: Theme.gap
    topPadding: 4
    bottomPadding: 4
    font.pixelSize: Theme.body
    font.weight: Font.Medium
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        readonly property real iconWidth: control.iconName === "" ? 0 : 20 + row.spacing
        readonly property real wordsWidth: Math.ceil(words.advanceWidth) + 1

        implicitWidth: iconWidth + wordsWidth
        implicitHeight: label.implicitHeight

        // A text that may wrap has another implicitWidth after it is laid out than before.
        TextMetrics {
            id: words

            text: control.text
            font: control.font
        }
        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.unit

            Icon {
                visible: control.iconName !== ""
                name: control.iconName
                size: 20
                color: control.letters
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                id: label

                text: control.text
                font: control.font
                color: control.letters
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                width: Math.min(control.contentItem.wordsWidth,
                                control.availableWidth - control.contentItem.iconWidth)
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.primary ? control.mainColor
                               : (control.hovered || control.down ? Theme.hovered : "transparent")
        border.width: control.primary ? 0 : 1
        border.color: Theme.line

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: Theme.text
            opacity: control.primary ? (control.down ? 0.2 : control.hovered ? 0.1 : 0) : 0
        }
        FocusRing {
            control: control
            anchors.margins: -4
            radius: parent.radius + 4
        }
    }
}
