// SPDX-License-Identifier: MIT
import QtQuick 2.15

/** A page that is made when it is shown for the first time, so that the app's start need not. */
FocusScope {
    id: page

    /** Whether it is the one that is shown. */
    property bool current: false
    property alias sourceComponent: loader.sourceComponent
    /** The page itself; null until it is made. */
    readonly property alias item: loader.item

    function make() {
        if (current)
            loader.active = true
    }

    focus: current
    onCurrentChanged: make()
    Component.onCompleted: make()

    // It gets its size when it is whole: layouts that are being made must not arrange themselves.
    Loader {
        id: loader

        active: false
        focus: true
        width: status === Loader.Ready ? page.width : 0
        height: status === Loader.Ready ? page.height : 0
    }
}
