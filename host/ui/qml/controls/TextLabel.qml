// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import VexaMaps 1.0

/** Text that is never cut: it wraps, and begins at the side where reading begins. */
Label {
    color: Theme.text
    font.pixelSize: Theme.body
    wrapMode: Text.Wrap
    horizontalAlignment: Text.AlignLeft
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
