// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** The maps on this device: how much room they take, updates and removal. */
FocusScope {
    id: page

    /** The update of all maps, and the version that it would lead to. */
    property var update: session.update
    property string newerVersion: session.newerVersion

    /** The window tells the free space beside the page. */
    property bool freeSpaceElsewhere: false
    /** Details are shown beside the list, as long as there are rows in it. */
    property bool detailsBeside: false
    readonly property bool hasDetails: list.shown > 0
    readonly property alias detailId: list.detailId
    property alias chosenId: list.chosenId

    signal sheetAsked(string id)
    signal updateAsked
    signal removalAsked(string id)
    signal browsingAsked

    ColumnLayout {
        width: page.detailsBeside ? Math.ceil(page.width / 2) : page.width
        height: parent.height
        anchors.left: parent.left
        spacing: 0

        PageHeader {
            title: qsTr("Installed maps")
            note: session.freeSpace > 0 && !page.freeSpaceElsewhere
                  ? qsTr("%1 free on this device").arg(Words.size(session.freeSpace)) : ""
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.column
        }
        UpdateBanner {
            update: page.update
            newerVersion: page.newerVersion
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.column - 32
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
            Layout.bottomMargin: 12
            onTriggered: page.updateAsked()
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            RegionList {
                id: list

                objectName: "installedList"
                anchors.horizontalCenter: parent.horizontalCenter
                height: parent.height
                width: Math.min(parent.width, Theme.column)
                focus: true
                markedId: page.detailsBeside ? page.detailId : ""
                filter: "installed"
                onPressed: region => page.sheetAsked(region.regionId)
                delegate: RegionRow {
                    id: row

                    region: model
                    showPath: true
                    sizeOf: "disk"
                    onClicked: page.sheetAsked(region.regionId)

                    IconButton {
                        visible: !row.region.pending && row.region.downloadable
                        enabled: Actions.blockade === ""
                        focusPolicy: row.buttonFocus
                        text: qsTr("Update %1").arg(row.region.name)
                        iconName: "update"
                        color: Theme.accent
                        onClicked: Actions.install(row.region.regionId)
                    }
                    IconButton {
                        visible: !row.region.pending
                        enabled: Actions.blockade === ""
                        focusPolicy: row.buttonFocus
                        text: qsTr("Remove %1").arg(row.region.name)
                        iconName: "trash"
                        color: Theme.danger
                        onClicked: page.removalAsked(row.region.regionId)
                    }
                }
            }
            EmptyState {
                visible: list.shown === 0 && !session.regions.loading
                iconName: "device"
                title: qsTr("No map is installed")
                text: qsTr("Installed maps work without any network. Choose the regions that you "
                           + "need.")
                actionText: qsTr("Choose maps")
                actionIcon: "map"
                anchors.centerIn: parent
                width: Math.min(parent.width - 48, 400)
                onTriggered: page.browsingAsked()
            }
        }
    }
}
