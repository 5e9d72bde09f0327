// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** Where a region stands, its sizes, and everything that can be done with it. */
ColumnLayout {
    id: details

    property string regionId
    /** The roles of the region, as its model has them now. */
    property var region: ({})
    /** Whether changes of the model are followed. */
    property bool live: true
    readonly property bool failed: region.state === "failed" || region.state === "cancelled"

    /** Something was asked for: a dialog has no more to say. */
    signal acted
    signal removalAsked(string id)
    /** The catalogue does not have the region any more. */
    signal gone

    function refresh() {
        var found = session.regions.get(regionId)
        region = found
        if (regionId !== "" && found.regionId === undefined)
            gone()
    }

    spacing: Theme.unit
    onRegionIdChanged: refresh()
    onLiveChanged: {
        if (live)
            refresh()
    }

    Connections {
        target: session.regions
        enabled: details.live
        function onDataChanged() { details.refresh() }
        function onCountChanged() { details.refresh() }
    }

    TextLabel {
        visible: text !== ""
        text: details.region.sentence || ""
        color: details.region.state === "failed" ? Theme.danger : Theme.text
        Layout.fillWidth: true
    }
    TextLabel {
        visible: text !== ""
        text: Actions.blockade
        color: Theme.secondaryText
        font.pixelSize: 14
        Layout.fillWidth: true
    }
    Loader {
        active: details.region.pending === true
        visible: active
        Layout.fillWidth: true
        sourceComponent: ProgressLine {
            fraction: details.region.progress === undefined ? -1 : details.region.progress
            resting: details.region.state === "queued" || details.region.state === "waiting"
        }
    }
    Repeater {
        model: [
            { label: qsTr("Download"), bytes: details.region.downloadSize },
            { label: qsTr("Needs when installed"), bytes: details.region.installationSize },
            { label: qsTr("On this device"), bytes: details.region.installed
                                                    ? details.region.sizeOnDisk : 0 }
        ]

        RowLayout {
            visible: modelData.bytes > 0
            Layout.fillWidth: true

            TextLabel {
                text: modelData.label
                color: Theme.secondaryText
                Layout.fillWidth: true
            }
            TextLabel {
                text: modelData.bytes > 0 ? Words.size(modelData.bytes) : ""
            }
        }
    }
    GridLayout {
        columns: 2
        columnSpacing: Theme.unit
        rowSpacing: Theme.unit
        Layout.topMargin: Theme.gap
        Layout.fillWidth: true

        PushButton {
            visible: details.region.pending === true
            enabled: Actions.blockade === ""
            text: qsTr("Cancel the download")
            iconName: "close"
            Layout.fillWidth: true
            Layout.columnSpan: 2
            onClicked: {
                Actions.cancel(details.regionId)
                details.acted()
            }
        }
        PushButton {
            visible: details.region.installed === true && !details.region.pending
            enabled: Actions.blockade === ""
            text: qsTr("Remove")
            iconName: "trash"
            dangerous: true
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            onClicked: {
                details.acted()
                details.removalAsked(details.regionId)
            }
        }
        PushButton {
            visible: details.region.downloadable === true && !details.region.pending
            enabled: Actions.blockade === ""
            text: details.failed ? qsTr("Try again")
                                 : details.region.installed ? qsTr("Update") : qsTr("Install")
            iconName: details.failed ? "refresh" : details.region.installed ? "update" : "download"
            primary: true
            focus: true
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.columnSpan: details.region.installed ? 1 : 2
            onClicked: {
                Actions.install(details.regionId)
                details.acted()
            }
        }
    }
}
