// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import VexaMaps 1.0

/** PushButtons that belong together: below each other where it is narrow, else side by side. */
GridLayout {
    // Not its own width: that may change while the layouts are being made.
    columns: Window.width < 720 ? 1 : 3
    columnSpacing: Theme.unit
    rowSpacing: Theme.unit
}
