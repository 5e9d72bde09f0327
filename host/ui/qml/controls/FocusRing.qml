// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VexaMaps 1.0

/** Shows where the keyboard is; not for fingers and mouse. */
Rectangle {
    property Item control

    anchors.fill: parent
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
    radius: Theme.radius
    visible: control !== null && control.visualFocus
}
