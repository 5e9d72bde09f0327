// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** A region in a list: its name, where it stands, and the one thing that can be done with it. */
ItemDelegate {
    id: row

    /** The roles of a row of a RegionModel. */
    property var region
    /** Name the regions that it lies in. */
    property bool showPath: false
    /** What the page adds below the name. */
    property string extra
    /** The size that the page is about: "download", "disk" or "progress". */
    property string sizeOf: "download"
    default property alias buttons: actions.data

    /** Tab leads to the buttons of the row that the arrows have chosen, not to all of them. */
    readonly property int buttonFocus: ListView.isCurrentItem ? Qt.StrongFocus : Qt.ClickFocus
    /** Its details are shown beside the list. */
    readonly property bool chosen: ListView.view !== null
                                   && ListView.view.markedId === region.regionId
    readonly property bool failed: region.state === "failed"
    readonly property bool shown: region.pending || failed || region.state === "cancelled"
    readonly property string facts: {
        var parts = []
        if (shown)
            parts.push(region.sentence)
        else if (region.installed && sizeOf !== "disk")
            parts.push(qsTr("Installed"))
        if (sizeOf === "disk" && !region.pending) {
            if (region.sizeOnDisk >= 0)
                parts.push(qsTr("%1 on this device").arg(Words.size(region.sizeOnDisk)))
        } else if (!shown && region.downloadSize > 0) {
            parts.push(Words.size(region.downloadSize))
        }
        if (region.hasChildren && sizeOf === "download")
            parts.push(qsTr("%n map(s) inside", "", region.childCount))
        if (extra !== "")
            parts.push(extra)
        return parts.join(" · ")
    }

    width: ListView.view ? ListView.view.width : implicitWidth
    implicitHeight: Math.max(72, content.implicitHeight + 20)
    hoverEnabled: true
    padding: 0
    focusPolicy: Qt.NoFocus // The list has it.
    highlighted: ListView.isCurrentItem && ListView.view.activeFocus
                 && ListView.view.byKeyboard
    text: region.name
    // A row that waits to be used again is out of sight, but not for those who have it read to them.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    Accessible.role: Accessible.ListItem
    Accessible.name: facts === "" ? text : qsTr("%1, %2").arg(text).arg(facts)
    Accessible.onPressAction: clicked()

    contentItem: RowLayout {
        id: content

        spacing: 12

        Rectangle {
            Layout.leftMargin: Theme.gap
            width: 40
            height: 40
            radius: 20
            color: row.failed ? Theme.dangerTint
                              : row.region.installed ? Theme.accent
                                : row.chosen ? Theme.surface : Theme.accentTint

            Icon {
                anchors.centerIn: parent
                size: 22
                name: row.failed ? "warning"
                                 : row.region.installed ? "check"
                                                        : row.region.hasChildren ? "globe" : "map"
                color: row.failed ? Theme.danger
                                  : row.region.installed ? Theme.accentText : Theme.accent
            }
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            Loader {
                active: row.showPath && row.region.path !== ""
                visible: active
                Layout.fillWidth: true
                sourceComponent: TextLabel {
                    text: row.region.path
                    color: Theme.secondaryText
                    font.pixelSize: Theme.small
                }
            }
            TextLabel {
                text: row.region.name
                font.weight: Font.Medium
                Layout.fillWidth: true
            }
            TextLabel {
                visible: text !== ""
                text: row.facts
                color: row.failed ? Theme.danger : Theme.secondaryText
                font.pixelSize: 14
                Layout.fillWidth: true
            }
            Loader {
                active: row.region.pending
                visible: active
                Layout.fillWidth: true
                Layout.topMargin: 6
                sourceComponent: ProgressLine {
                    fraction: row.region.state === "queued" ? 0 : row.region.progress
                    resting: row.region.state === "queued" || row.region.state === "waiting"
                }
            }
            Loader {
                active: row.sizeOf === "progress" && row.region.pending
                        && row.region.bytesTotal > 0
                visible: active
                Layout.fillWidth: true
                sourceComponent: TextLabel {
                    text: qsTr("%1 of %2").arg(Words.size(row.region.bytesReceived))
                                          .arg(Words.size(row.region.bytesTotal))
                    color: Theme.secondaryText
                    font.pixelSize: Theme.small
                }
            }
        }
        RowLayout {
            id: actions

            spacing: 0
            Layout.rightMargin: Theme.unit
        }
    }
    background: Rectangle {
        color: row.chosen ? Theme.accentTint
                          : row.hovered || row.down ? Theme.hovered : Theme.surface

        Rectangle {
            width: parent.width
            height: 1
            anchors.bottom: parent.bottom
            color: Theme.line
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: 2
            visible: row.highlighted
            radius: 8
            color: "transparent"
            border.width: 2
            border.color: Theme.accent
        }
    }
}
