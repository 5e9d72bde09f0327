// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** The network, the state of the data, the server, and how the app looks and logs. */
FocusScope {
    id: page

    /** The update of all maps, and the version that it would lead to. */
    property var update: session.update
    property string newerVersion: session.newerVersion

    signal updateAsked

    readonly property var styles: [
        { text: qsTr("As the system"), value: "" },
        { text: qsTr("Light"), value: "light" },
        { text: qsTr("Dark"), value: "dark" }
    ]
    readonly property var levels: [
        { text: qsTr("Off"), value: 0 },
        { text: qsTr("Errors"), value: 1 },
        { text: qsTr("Errors and warnings"), value: 2 },
        { text: qsTr("Information too"), value: 3 },
        { text: qsTr("Everything"), value: 4 }
    ]

    function nameOf(choices, value) {
        for (var i = 0; i < choices.length; ++i) {
            if (choices[i].value === value)
                return choices[i].text
        }
        return ""
    }

    function orUnknown(text) {
        return text === "" ? qsTr("Unknown") : text
    }

    function look() {
        if (visible)
            session.update.look()
    }

    onVisibleChanged: look()
    Component.onCompleted: look()

    RegionFilterModel {
        id: installed

        regions: session.regions
        filter: "installed"
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        PageHeader {
            title: qsTr("Settings")
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.column
        }
        Flickable {
            id: view

            objectName: "settingsView"
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
                    title: qsTr("Network")
                    Layout.fillWidth: true

                    SettingRow {
                        iconName: "wifi"
                        text: !session.network.online ? qsTr("No network")
                              : session.network.wifi ? qsTr("Connected over Wi-Fi or a cable")
                                                     : qsTr("Connected over a mobile network")
                        value: session.network.source === "manual" ? qsTr("Set by you")
                               : session.network.source === "platform"
                                 ? qsTr("Told by the system") : qsTr("The system does not tell")
                    }
                    SwitchRow {
                        text: qsTr("Download over mobile networks")
                        explanation: qsTr("May cost money. Off: downloads wait for Wi-Fi.")
                        value: session.network.mobileAllowed
                        onAsked: value => session.network.mobileAllowed = value
                    }
                    SwitchRow {
                        text: qsTr("Set the network by hand")
                        explanation: qsTr("For when the system does not know it.")
                        value: session.network.manual
                        onAsked: value => session.network.manual = value
                    }
                    SwitchRow {
                        visible: session.network.source === "manual"
                        text: qsTr("There is a network")
                        value: session.network.manualOnline
                        onAsked: value => session.network.manualOnline = value
                    }
                    SwitchRow {
                        visible: session.network.source === "manual"
                        enabled: session.network.manualOnline
                        text: qsTr("It is Wi-Fi or a cable")
                        value: session.network.manualWifi
                        onAsked: value => session.network.manualWifi = value
                    }
                }
                Card {
                    title: qsTr("On this device")
                    Layout.fillWidth: true

                    SettingRow {
                        text: qsTr("Installed maps")
                        value: qsTr("%n map(s)", "", installed.count)
                    }
                    SettingRow {
                        text: qsTr("Free space")
                        value: session.freeSpace > 0 ? Words.size(session.freeSpace)
                                                     : qsTr("Unknown")
                    }
                    SettingRow {
                        text: qsTr("Version of the maps")
                        value: page.orUnknown(session.catalog.installedMapsVersion)
                    }
                    SettingRow {
                        text: qsTr("Version of the map objects")
                        value: page.orUnknown(session.catalog.installedMOSVersion)
                    }
                    SettingRow {
                        text: qsTr("City index")
                        value: qsTr("%n city package(s)", "", session.cityIndex.count)
                    }
                    SettingRow {
                        text: qsTr("Folder")
                        value: session.catalog.mapBaseDirectory
                    }
                }
                OldMapsCard {
                    update: page.update
                    Layout.fillWidth: true
                }
                Card {
                    title: qsTr("Server")
                    Layout.fillWidth: true

                    SettingRow {
                        actionable: true
                        text: qsTr("Content server")
                        value: session.baseUri
                        onClicked: server.ask()
                    }
                    SettingRow {
                        text: qsTr("List of maps")
                        value: qsTr("%n map(s) to choose from", "", session.regions.count)
                    }
                    SettingRow {
                        actionable: true
                        text: qsTr("Update of all maps")
                        value: page.update.running ? qsTr("Under way")
                               : page.update.whole
                                 ? qsTr("Version %1 is on this device").arg(page.update.targetVersion)
                               : page.update.prepared
                                 ? qsTr("Version %1 is being prepared").arg(page.update.targetVersion)
                               : page.newerVersion !== ""
                                 ? qsTr("The server has newer maps: version %1")
                                       .arg(page.newerVersion)
                               : qsTr("No newer maps are known")
                        onClicked: page.updateAsked()
                    }
                    RowLayout {
                        Layout.leftMargin: Theme.gap
                        Layout.rightMargin: Theme.gap
                        Layout.bottomMargin: Theme.unit
                        spacing: Theme.gap

                        PushButton {
                            enabled: session.ready
                            text: session.refreshing ? qsTr("Stop looking")
                                                     : qsTr("Look for new maps")
                            iconName: session.refreshing ? "close" : "refresh"
                            onClicked: {
                                if (session.refreshing)
                                    session.cancelRefresh()
                                else
                                    session.refresh()
                            }
                        }
                        BusyMark {
                            visible: session.refreshing
                        }
                    }
                }
                Card {
                    title: qsTr("This app")
                    Layout.fillWidth: true

                    SettingRow {
                        actionable: true
                        text: qsTr("Appearance")
                        value: page.nameOf(page.styles, session.style)
                        onClicked: styleChoice.open()
                    }
                    SettingRow {
                        actionable: true
                        text: qsTr("Log")
                        value: page.nameOf(page.levels, session.logLevel)
                        onClicked: levelChoice.open()
                    }
                    SettingRow {
                        text: qsTr("Version")
                        value: session.programVersion
                    }
                }
            }
        }
    }

    ChoiceDialog {
        id: styleChoice

        heading: qsTr("Appearance")
        choices: page.styles
        current: session.style
        onChosen: value => session.style = value
    }
    ChoiceDialog {
        id: levelChoice

        heading: qsTr("Log")
        choices: page.levels
        current: session.logLevel
        onChosen: value => session.logLevel = value
    }
    ServerDialog {
        id: server
    }
}
