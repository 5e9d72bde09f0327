// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** Everything about one region, and everything that can be done with it. */
SheetDialog {
    id: sheet

    property string regionId
    property var region: ({})
    readonly property bool failed: region.state === "failed" || region.state === "cancelled"

    signal removalAsked(string id)

    function show(id) {
        regionId = id
        refresh()
        open()
    }

    function refresh() {
        var found = session.regions.get(regionId)
        if (found.regionId === undefined)
            close() // The catalogue does not have it any more.
        else
            region = found
    }

    function install() {
        Actions.install(regionId)
        close()
    }

    heading: region.name || ""
    subheading: region.path || ""

    Connections {
        target: session.regions
        enabled: sheet.opened
        function onDataChanged() { sheet.refresh() }
        function onCountChanged() { sheet.refresh() }
    }

    TextLabel {
        text: sheet.region.sentence || ""
        color: sheet.region.state === "failed" ? Theme.danger : Theme.text
        Layout.fillWidth: true
    }
    TextLabel {
        visible: text !== ""
        text: Actions.blockade
        color: Theme.secondaryText
        font.pixelSize: 14
        Layout.fillWidth: true
    }
    ProgressLine {
        visible: sheet.region.pending === true
        fraction: sheet.region.progress === undefined ? -1 : sheet.region.progress
        resting: sheet.region.state === "queued" || sheet.region.state === "waiting"
        Layout.fillWidth: true
    }
    Repeater {
        model: [
            { label: qsTr("Download"), bytes: sheet.region.downloadSize },
            { label: qsTr("Needs when installed"), bytes: sheet.region.installationSize },
            { label: qsTr("On this device"), bytes: sheet.region.installed
                                                    ? sheet.region.sizeOnDisk : 0 }
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
            visible: sheet.region.pending === true
            enabled: Actions.blockade === ""
            text: qsTr("Cancel the download")
            iconName: "close"
            Layout.fillWidth: true
            Layout.columnSpan: 2
            onClicked: {
                Actions.cancel(sheet.regionId)
                sheet.close()
            }
        }
        PushButton {
            visible: sheet.region.installed === true && !sheet.region.pending
            enabled: Actions.blockade === ""
            text: qsTr("Remove")
            iconName: "trash"
            dangerous: true
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            onClicked: {
                sheet.close()
                sheet.removalAsked(sheet.regionId)
            }
        }
        PushButton {
            visible: sheet.region.downloadable === true && !sheet.region.pending
            enabled: Actions.blockade === ""
            text: sheet.failed ? qsTr("Try again")
                               : sheet.region.installed ? qsTr("Update") : qsTr("Install")
            iconName: sheet.failed ? "refresh" : sheet.region.installed ? "update" : "download"
            primary: true
            focus: true
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.columnSpan: sheet.region.installed ? 1 : 2
            onClicked: sheet.install()
        }
        PushButton {
            text: qsTr("Close")
            Layout.fillWidth: true
            Layout.columnSpan: 2
            onClicked: sheet.close()
        }
    }
}
