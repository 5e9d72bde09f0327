// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** All installed maps go over to the server's newest version together, and back again. */
FocusScope {
    id: page

    /** A MapsUpdate. */
    property var update: session.update
    property string newerVersion: session.newerVersion
    readonly property string phase: update.state
    readonly property bool lacking: phase === "failed" && update.missingRegions.length > 0
    readonly property bool over: phase === "done" || phase === "upToDate"
    /** An update, begun or not, can be started from here. */
    readonly property bool startable: !update.running && !over
                                      && (update.prepared || newerVersion !== ""
                                          || phase === "failed")
    readonly property bool canLook: !startable && !update.running && phase !== "done"
    readonly property bool offersMobile: (startable || phase === "held") && session.network.metered
                                         && !session.network.mobileAllowed
    readonly property string heading: {
        if (phase === "held")
            return qsTr("The update waits")
        if (phase === "goingBack")
            return qsTr("Going back to the old maps")
        if (update.running)
            return qsTr("The maps are being updated")
        if (phase === "done")
            return qsTr("All maps are updated")
        if (phase === "failed")
            return qsTr("The update could not be finished")
        if (update.prepared)
            return update.whole ? qsTr("Newer maps are ready") : qsTr("An update is not finished")
        return newerVersion !== "" ? qsTr("There are newer maps") : qsTr("No newer maps are known")
    }
    readonly property string sentence: {
        switch (phase) {
        case "held":
            return qsTr("There is no network that it may use. It goes on by itself as soon as there "
                        + "is one.")
        case "checking":
            return qsTr("Asking the server for its version")
        case "fetching":
            return qsTr("Fetching the list of maps of version %1").arg(update.targetVersion)
        case "installing":
            return update.region === "" ? qsTr("Preparing version %1").arg(update.targetVersion)
                                        : qsTr("Preparing %1").arg(update.region)
        case "ready":
        case "swapping":
            return qsTr("Putting version %1 in use").arg(update.targetVersion)
        case "goingBack":
            return qsTr("Please wait")
        case "done":
            return qsTr("Version %1 has taken the place of version %2.")
                       .arg(update.targetVersion).arg(update.fromVersion)
        case "upToDate":
            return qsTr("The maps are of the newest version.")
        case "failed":
            return lacking ? qsTr("Version %1 does not have these installed maps any more:")
                                 .arg(update.targetVersion)
                           : update.errorString
        }
        if (update.prepared)
            return update.whole
                   ? qsTr("The maps of version %1 are on this device. They can be put in use without "
                          + "a download.").arg(update.targetVersion)
                   : qsTr("The update to version %1 goes on where it ended. The maps in use stay as "
                          + "they are until it is done.").arg(update.targetVersion)
        if (newerVersion !== "")
            return qsTr("All installed maps are updated together. The new ones are downloaded beside "
                        + "those in use, which can be gone back to afterwards.")
        return qsTr("The server tells whether there are any.")
    }

    signal backAsked

    function look() {
        if (visible)
            session.update.look()
    }

    onVisibleChanged: look()
    Component.onCompleted: look()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        PageHeader {
            title: qsTr("Update of all maps")
            canGoBack: true
            onBack: page.backAsked()
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.column
        }
        Flickable {
            id: view

            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar { }

            // No binding: asking a layout for its height may make it find another one, in a loop.
            function measure() {
                contentHeight = column.implicitHeight + 32
            }

            ColumnLayout {
                id: column

                x: (parent.width - width) / 2
                width: Math.min(view.width - 32, Theme.column - 32)
                spacing: 24
                onImplicitHeightChanged: Qt.callLater(view.measure)
                Component.onCompleted: view.measure()

                Card {
                    Layout.fillWidth: true

                    // No layout: it would have to find its height again at each step.
                    Column {
                        spacing: 12
                        Layout.fillWidth: true
                        Layout.margins: Theme.gap
                        Layout.topMargin: Theme.unit
                        Layout.bottomMargin: Theme.unit

                        Item {
                            width: parent.width
                            height: Math.max(mark.height, title.height)

                            Rectangle {
                                id: mark

                                width: 40
                                height: 40
                                radius: 20
                                color: page.phase === "failed" ? Theme.dangerTint
                                       : page.over ? Theme.accent : Theme.accentTint
                                anchors.left: parent.left
                                anchors.verticalCenter: parent.verticalCenter

                                Icon {
                                    anchors.centerIn: parent
                                    size: 22
                                    name: page.phase === "failed" ? "warning"
                                          : page.over ? "check"
                                          : page.phase === "held" ? "waiting" : "update"
                                    color: page.phase === "failed" ? Theme.danger
                                           : page.over ? Theme.accentText : Theme.accent
                                }
                            }
                            TextLabel {
                                id: title

                                text: page.heading
                                font.pixelSize: 18
                                font.weight: Font.DemiBold
                                anchors.left: mark.right
                                anchors.leftMargin: 12
                                anchors.right: parent.right
                                anchors.verticalCenter: parent.verticalCenter
                                Accessible.role: Accessible.Heading
                            }
                        }
                        TextLabel {
                            objectName: "updateSentence"
                            text: page.sentence
                            width: parent.width
                        }
                        TextLabel {
                            visible: page.lacking
                            text: page.update.missingRegions.join("\n")
                            font.weight: Font.Medium
                            width: parent.width
                        }
                        TextLabel {
                            visible: page.lacking
                            text: qsTr("If you go on without them, they stay only in the old maps.")
                            color: Theme.secondaryText
                            width: parent.width
                        }
                        ProgressLine {
                            visible: page.update.running && !page.over
                            fraction: page.update.fraction
                            resting: page.phase === "held"
                            width: parent.width
                        }
                        TextLabel {
                            visible: page.update.running && !page.over
                                     && page.update.bytesTotal > 0
                            text: qsTr("%1 of %2").arg(Words.size(page.update.bytesReceived))
                                                  .arg(Words.size(page.update.bytesTotal))
                            color: Theme.secondaryText
                            font.pixelSize: Theme.small
                            width: parent.width
                        }
                        TextLabel {
                            visible: page.startable && text !== ""
                            text: page.update.hindrance
                            color: Theme.danger
                            font.pixelSize: 14
                            width: parent.width
                        }
                        ButtonGroup {
                            visible: page.startable || page.update.canStop || page.update.prepared
                                     || page.canLook || page.offersMobile
                            width: parent.width

                            PushButton {
                                visible: page.startable
                                enabled: page.update.hindrance === ""
                                primary: true
                                text: page.lacking ? qsTr("Go on without them")
                                      : page.phase === "failed" ? qsTr("Try again")
                                      : !page.update.prepared ? qsTr("Update all maps")
                                      : page.update.whole
                                        ? qsTr("Use version %1").arg(page.update.targetVersion)
                                        : qsTr("Go on")
                                iconName: page.update.prepared ? "play" : "update"
                                Layout.fillWidth: true
                                Layout.preferredWidth: 1
                                Layout.maximumWidth: 400
                                onClicked: page.update.start(page.lacking)
                            }
                            PushButton {
                                visible: page.offersMobile
                                text: qsTr("Use the mobile network")
                                iconName: "wifi"
                                Layout.fillWidth: true
                                Layout.preferredWidth: 1
                                Layout.maximumWidth: 400
                                onClicked: session.network.mobileAllowed = true
                            }
                            PushButton {
                                visible: page.update.canStop
                                text: qsTr("Stop")
                                iconName: "pause"
                                Layout.fillWidth: true
                                Layout.preferredWidth: 1
                                Layout.maximumWidth: 400
                                onClicked: page.update.stop()
                            }
                            PushButton {
                                visible: page.update.canStop
                                         || (page.update.prepared && !page.update.running)
                                dangerous: true
                                text: page.update.whole && !page.update.running
                                      ? qsTr("Remove the newer maps") : qsTr("Give up")
                                iconName: page.update.whole ? "trash" : "close"
                                Layout.fillWidth: true
                                Layout.preferredWidth: 1
                                Layout.maximumWidth: 400
                                onClicked: givingUp.open()
                            }
                            PushButton {
                                visible: page.canLook
                                enabled: session.ready && !session.refreshing
                                text: qsTr("Look for new maps")
                                iconName: "refresh"
                                Layout.fillWidth: true
                                Layout.preferredWidth: 1
                                Layout.maximumWidth: 400
                                onClicked: session.refresh()
                            }
                        }
                    }
                }
                OldMapsCard {
                    update: page.update
                    fresh: page.phase === "done"
                    Layout.fillWidth: true
                }
                Card {
                    title: qsTr("Versions")
                    Layout.fillWidth: true

                    SettingRow {
                        text: qsTr("In use")
                        value: session.catalog.installedMapsVersion || qsTr("None")
                    }
                    SettingRow {
                        visible: value !== ""
                        text: page.update.whole ? qsTr("Newer") : qsTr("On the server")
                        value: page.over ? ""
                               : page.update.running || page.update.prepared
                                 ? page.update.targetVersion : page.newerVersion
                    }
                    SettingRow {
                        text: qsTr("Free space")
                        value: session.freeSpace > 0 ? Words.size(session.freeSpace)
                                                     : qsTr("Unknown")
                    }
                }
            }
        }
    }

    ConfirmDialog {
        id: givingUp

        objectName: "giveUpDialog"
        heading: page.update.whole && !page.update.running ? qsTr("Remove the newer maps?")
                                                           : qsTr("Give the update up?")
        text: qsTr("What was downloaded of version %1 is removed. The maps in use stay as they are.")
                  .arg(page.update.targetVersion)
        acceptText: page.update.whole && !page.update.running ? qsTr("Remove") : qsTr("Give up")
        dangerous: true
        onAccepted: page.update.giveUp()
    }
}
