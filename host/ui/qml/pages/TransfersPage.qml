// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** What is being downloaded and installed, in the order in which it is done. */
FocusScope {
    id: page

    readonly property bool waiting: list.shown > 0 && !session.installer.paused
    readonly property string hindrance: {
        if (!waiting || session.installer.pending.length === 0)
            return ""
        if (!session.network.online)
            return qsTr("There is no network. Downloads go on as soon as there is one.")
        if (!session.network.wifi && !session.network.mobileAllowed)
            return qsTr("Downloads wait for Wi-Fi.")
        return ""
    }

    readonly property bool anyEnded: session.installer.failed.length > 0

    /** Details are shown beside the list, as long as there are rows in it. */
    property bool detailsBeside: false
    readonly property bool hasDetails: list.shown > 0
    readonly property alias detailId: list.detailId
    property alias chosenId: list.chosenId

    signal sheetAsked(string id)
    signal browsingAsked

    ColumnLayout {
        width: page.detailsBeside ? Math.ceil(page.width / 2) : page.width
        height: parent.height
        anchors.left: parent.left
        spacing: 0

        PageHeader {
            title: qsTr("Transfers")
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.column

            PushButton {
                objectName: "pauseButton"
                enabled: Actions.blockade === ""
                visible: session.installer.paused || session.installer.pending.length > 0
                text: session.installer.paused ? qsTr("Resume") : qsTr("Pause")
                iconName: session.installer.paused ? "play" : "pause"
                primary: session.installer.paused
                onClicked: {
                    if (session.installer.paused)
                        session.installer.resume()
                    else
                        session.installer.pause()
                }
            }
        }
        Banner {
            visible: page.hindrance !== ""
            text: page.hindrance
            iconName: "wifi"
            actionText: session.network.metered ? qsTr("Use the mobile network") : ""
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.column - 32
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
            Layout.bottomMargin: 12
            onTriggered: session.network.mobileAllowed = true
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            RegionList {
                id: list

                objectName: "transferList"
                anchors.horizontalCenter: parent.horizontalCenter
                height: parent.height
                width: Math.min(parent.width, Theme.column)
                focus: true
                markedId: page.detailsBeside ? page.detailId : ""
                filter: "transfers"
                onPressed: region => page.sheetAsked(region.regionId)
                footer: page.anyEnded ? clearing : null
                delegate: RegionRow {
                    id: row

                    region: model
                    showPath: true
                    sizeOf: "progress"
                    onClicked: page.sheetAsked(region.regionId)

                    IconButton {
                        visible: !row.region.pending
                        enabled: Actions.blockade === ""
                        focusPolicy: row.buttonFocus
                        text: qsTr("Try %1 again").arg(row.region.name)
                        iconName: "refresh"
                        color: Theme.accent
                        onClicked: Actions.install(row.region.regionId)
                    }
                    IconButton {
                        visible: !row.region.pending
                        focusPolicy: row.buttonFocus
                        text: qsTr("Remove %1 from the list").arg(row.region.name)
                        iconName: "close"
                        color: Theme.secondaryText
                        onClicked: Actions.dismiss(row.region.regionId)
                    }
                    IconButton {
                        visible: row.region.pending
                        enabled: Actions.blockade === ""
                        focusPolicy: row.buttonFocus
                        text: qsTr("Cancel %1").arg(row.region.name)
                        iconName: "close"
                        color: Theme.secondaryText
                        onClicked: Actions.cancel(row.region.regionId)
                    }
                }
            }
            EmptyState {
                visible: list.shown === 0
                iconName: "transfers"
                title: qsTr("Nothing is being transferred")
                text: qsTr("Maps that you choose to install are shown here until they are ready.")
                actionText: qsTr("Choose maps")
                actionIcon: "map"
                anchors.centerIn: parent
                width: Math.min(parent.width - 48, 400)
                onTriggered: page.browsingAsked()
            }
        }
    }

    Component {
        id: clearing

        Item {
            width: list.width
            implicitHeight: button.implicitHeight + 2 * Theme.gap

            PushButton {
                id: button

                anchors.centerIn: parent
                width: Math.min(implicitWidth, parent.width - 2 * Theme.gap)
                text: qsTr("Clear ended transfers")
                iconName: "close"
                onClicked: session.installer.dismissAll()
            }
        }
    }
}
