// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import VexaMaps 1.0

/** One of the app's own icons, in any colour. */
Image {
    property string name
    property color color: Theme.text
    property int size: 24
    /** Points along the line of reading. */
    property bool directional: false

    source: name === "" ? "" : "image://icons/" + name + "/" + String(color).slice(-6)
    sourceSize: Qt.size(size * Screen.devicePixelRatio, size * Screen.devicePixelRatio)
    width: size
    height: size
    mirror: directional && Theme.mirrored
    Accessible.ignored: true
}
