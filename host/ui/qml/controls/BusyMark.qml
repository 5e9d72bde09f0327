// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VexaMaps 1.0

/** Three dots that take turns: something is under way. */
Row {
    id: mark

    property bool running: visible
    property int phase: 0

    spacing: 6
    Accessible.role: Accessible.Animation
    Accessible.name: qsTr("Please wait")

    Timer {
        running: mark.running
        interval: 320
        repeat: true
        onTriggered: mark.phase = (mark.phase + 1) % 3
    }
    Repeater {
        model: 3

        Rectangle {
            width: 10
            height: 10
            radius: 5
            color: Theme.accent
            opacity: index === mark.phase ? 1 : 0.3

            Behavior on opacity {
                NumberAnimation {
                    duration: 240
                }
            }
        }
    }
}
