// SPDX-License-Identifier: MIT
// Colours, sizes and letters of the whole app. Lengths are multiples of 8, halves where needed.
pragma Singleton
import QtQuick 2.15

QtObject {
    property bool dark: false
    readonly property bool mirrored: Qt.application.layoutDirection === Qt.RightToLeft

    readonly property color background: dark ? "#11171b" : "#f2f5f6"
    readonly property color surface: dark ? "#1a2227" : "#ffffff"
    readonly property color raised: dark ? "#232d33" : "#ffffff"
    readonly property color hovered: dark ? "#26323a" : "#e8eef0"
    readonly property color line: dark ? "#34424a" : "#d5dde0"
    readonly property color text: dark ? "#e7ecee" : "#172126"
    readonly property color secondaryText: dark ? "#a3b1b8" : "#55646b"
    readonly property color accent: dark ? "#63cbc1" : "#0b6e69"
    readonly property color accentText: dark ? "#04211f" : "#ffffff"
    readonly property color accentTint: dark ? "#1d3b3a" : "#d9efec"
    readonly property color danger: dark ? "#ff9c91" : "#b3261e"
    readonly property color dangerText: dark ? "#3a0905" : "#ffffff"
    readonly property color dangerTint: dark ? "#42201d" : "#fbe4e2"
    readonly property color shade: "#99000000"

    readonly property int unit: 8
    readonly property int gap: 16
    readonly property int touch: 48
    readonly property int radius: 12
    /** Lists and cards grow no wider: longer lines are hard to follow. */
    readonly property int column: 760

    readonly property int small: 13
    readonly property int body: 16
    readonly property int heading: 20
    readonly property int title: 24
}
