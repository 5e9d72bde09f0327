// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** The details of one region, where there is no room for them beside the list. */
SheetDialog {
    id: sheet

    signal removalAsked(string id)

    function show(id) {
        details.regionId = id
        open()
    }

    heading: details.region.name || ""
    subheading: details.region.path || ""

    RegionDetails {
        id: details

        live: sheet.opened
        Layout.fillWidth: true
        onActed: sheet.close()
        onGone: sheet.close()
        onRemovalAsked: id => sheet.removalAsked(id)
    }
    PushButton {
        text: qsTr("Close")
        Layout.fillWidth: true
        onClicked: sheet.close()
    }
}
