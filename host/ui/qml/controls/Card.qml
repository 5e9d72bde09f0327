// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** A group of rows under a heading. */
ColumnLayout {
    id: card

    property string title
    default property alias rows: column.data

    spacing: Theme.unit

    TextLabel {
        visible: card.title !== ""
        text: card.title
        color: Theme.accent
        font.pixelSize: 14
        font.weight: Font.DemiBold
        Layout.fillWidth: true
        Layout.leftMargin: Theme.gap
        Layout.rightMargin: Theme.gap
        Accessible.role: Accessible.Heading
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: column.implicitHeight + 16
        radius: Theme.radius
        color: Theme.surface
        border.width: 1
        border.color: Theme.line

        ColumnLayout {
            id: column

            anchors.fill: parent
            anchors.topMargin: Theme.unit
            anchors.bottomMargin: Theme.unit
            spacing: 0
        }
    }
}
