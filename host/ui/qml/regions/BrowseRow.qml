// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** A region to choose: it can be installed at once, or gone into. */
RegionRow {
    id: row

    region: model

    IconButton {
        visible: row.region.downloadable && !row.region.installed && !row.region.pending
        enabled: Actions.blockade === ""
        focusPolicy: row.buttonFocus
        text: row.failed ? qsTr("Try %1 again").arg(row.region.name)
                         : qsTr("Install %1").arg(row.region.name)
        iconName: row.failed ? "refresh" : "download"
        color: Theme.accent
        onClicked: Actions.install(row.region.regionId)
    }
    Loader {
        active: row.region.pending
        visible: active
        sourceComponent: IconButton {
            enabled: Actions.blockade === ""
            focusPolicy: row.buttonFocus
            text: qsTr("Cancel %1").arg(row.region.name)
            iconName: "close"
            color: Theme.secondaryText
            onClicked: Actions.cancel(row.region.regionId)
        }
    }
    Icon {
        visible: row.region.hasChildren || row.region.installed
        name: "next"
        directional: true
        size: 20
        color: Theme.secondaryText
        Layout.leftMargin: 4
        Layout.rightMargin: Theme.unit
    }
}
