// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import VexaMaps 1.0

/** How far a step is, 0 to 1. Below 0, while that is unknown, a piece runs along the line. */
ProgressBar {
    id: control

    property real fraction: -1
    /** Nothing moves at the moment. */
    property bool resting: false

    value: Math.max(0, fraction)
    implicitHeight: 6
    Accessible.role: Accessible.ProgressBar
    Accessible.name: fraction < 0 ? qsTr("Progress is not known yet")
                                  : qsTr("%1 %").arg(Math.floor(fraction * 100))

    background: Rectangle {
        radius: 3
        color: Theme.line
    }
    contentItem: Item {
        clip: true

        Rectangle {
            id: piece

            readonly property bool running: control.fraction < 0 && !control.resting
            property real way: 0

            height: parent.height
            radius: 3
            color: control.resting ? Theme.secondaryText : Theme.accent
            width: running ? parent.width * 0.3 : parent.width * control.value
            x: running ? parent.width * (way * 1.3 - 0.3)
                       : Theme.mirrored ? parent.width - width : 0

            NumberAnimation on way {
                running: piece.running && control.visible
                from: 0
                to: 1
                duration: 1400
                loops: Animation.Infinite
            }
        }
    }
}
