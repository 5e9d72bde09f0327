// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** The window: bar at the side where it is wide, tabs at the bottom where it is narrow. */
ApplicationWindow {
    id: window

    readonly property bool wide: width >= 720
    /** There is room for a region's details beside the list. */
    readonly property bool roomy: width >= 960
    property int page: 0
    readonly property int updatePage: 4
    property int pageBefore: 0
    property var update: session.update
    property string newerVersion: session.newerVersion

    visible: true
    width: 360
    height: 640
    minimumWidth: 320
    minimumHeight: 480
    title: qsTr("Maps")
    color: Theme.background
    palette.window: Theme.background
    palette.windowText: Theme.text
    palette.base: Theme.surface
    palette.text: Theme.text
    palette.highlight: Theme.accent
    palette.highlightedText: Theme.accentText
    palette.toolTipBase: Theme.text
    palette.toolTipText: Theme.background

    LayoutMirroring.enabled: Theme.mirrored
    LayoutMirroring.childrenInherit: true

    function show(number) {
        page = number
    }

    /** The page of the update, which leads back to where one came from. */
    function showUpdate() {
        if (page !== updatePage)
            pageBefore = page
        page = updatePage
    }

    /** The details of a region: beside the list, or in a sheet over it. */
    function showDetails(id) {
        pages.item.showDetails(id)
    }

    function goBack() {
        if (pages.item && pages.item.goBack())
            return
        if (page === updatePage) {
            page = pageBefore
            return
        }
        if (page !== 0)
            page = 0
    }

    Binding {
        target: Theme
        property: "dark"
        value: session.dark
    }
    Binding {
        target: Actions
        property: "blockade"
        value: window.update.blockade
    }
    Connections {
        target: session
        function onNoticed(text, isError) { notice.show(text, isError) }
    }
    Shortcut {
        sequence: StandardKey.Find
        enabled: session.isOpen
        onActivated: {
            window.show(0)
            pages.item.focusSearch()
        }
    }
    Shortcut {
        sequences: ["F5", "Ctrl+R"]
        onActivated: session.refresh()
    }
    Shortcut {
        sequences: ["Escape", "Back", "Alt+Left"]
        onActivated: window.goBack()
    }
    Shortcut {
        sequence: StandardKey.Quit
        onActivated: window.close()
    }
    Instantiator {
        model: 4
        delegate: Shortcut {
            sequence: "Alt+" + (index + 1)
            onActivated: window.show(index)
        }
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0

        Loader {
            active: window.wide
            visible: active
            Layout.fillHeight: true
            Layout.preferredWidth: 232
            sourceComponent: Rectangle {
                color: Theme.surface

                ColumnLayout {
                    anchors.fill: parent
                    anchors.margins: 12
                    spacing: 4

                    RowLayout {
                        spacing: 12
                        Layout.leftMargin: 12
                        Layout.topMargin: Theme.unit
                        Layout.bottomMargin: Theme.gap

                        Image {
                            source: "image://icons/vexa-maps-ui/000000" // in its own colours
                            sourceSize: Qt.size(72, 72)
                            Layout.preferredWidth: 36
                            Layout.preferredHeight: 36
                            Accessible.ignored: true
                        }
                        TextLabel {
                            text: window.title
                            font.pixelSize: Theme.heading
                            font.weight: Font.DemiBold
                            Layout.fillWidth: true
                        }
                    }
                    Repeater {
                        model: entries.items

                        NavButton {
                            lying: true
                            text: modelData.text
                            iconName: modelData.icon
                            badge: index === entries.transfersPage ? entries.transfers : 0
                            current: window.page === index
                                     || (window.page === window.updatePage
                                         && window.pageBefore === index)
                            Layout.fillWidth: true
                            onClicked: window.show(index)
                        }
                    }
                    Item {
                        Layout.fillHeight: true
                    }
                    DeviceSummary {
                        visible: session.isOpen
                        Layout.fillWidth: true
                        Layout.margins: 12
                    }
                }
                Rectangle {
                    width: 1
                    height: parent.height
                    anchors.right: parent.right
                    color: Theme.line
                }
            }
        }
        ColumnLayout {
            spacing: 0
            Layout.fillWidth: true
            Layout.fillHeight: true

            Loader {
                id: pages

                focus: true
                active: session.isOpen
                sourceComponent: allPages
                visible: active
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            Item {
                visible: !session.isOpen
                Layout.fillWidth: true
                Layout.fillHeight: true

                EmptyState {
                    objectName: "opening"
                    anchors.centerIn: parent
                    width: Math.min(parent.width - 48, 400)
                    iconName: session.problem === "" ? "map" : "warning"
                    title: session.problem === "" ? qsTr("Opening the maps")
                                                  : qsTr("The maps cannot be opened")
                    text: session.problem
                    busy: session.problem === ""
                    actionText: qsTr("Try again")
                    actionIcon: "refresh"
                    onTriggered: session.open()
                }
            }
            Loader {
                active: !window.wide
                visible: active
                Layout.fillWidth: true
                sourceComponent: Rectangle {
                    color: Theme.surface
                    implicitHeight: 64

                    Rectangle {
                        width: parent.width
                        height: 1
                        color: Theme.line
                    }
                    RowLayout {
                        anchors.fill: parent
                        spacing: 0

                        Repeater {
                            model: entries.items

                            NavButton {
                                text: modelData.text
                                iconName: modelData.icon
                                badge: index === entries.transfersPage ? entries.transfers : 0
                                current: window.page === index
                                     || (window.page === window.updatePage
                                         && window.pageBefore === index)
                                Layout.fillWidth: true
                                Layout.preferredWidth: 1
                                onClicked: window.show(index)
                            }
                        }
                    }
                }
            }
        }
    }

    QtObject {
        id: entries

        readonly property int transfersPage: 2
        readonly property int transfers: session.isOpen ? session.installer.pending.length : 0
        readonly property var items: [
            { text: qsTr("Maps"), icon: "map" },
            { text: qsTr("Installed"), icon: "device" },
            { text: qsTr("Transfers"), icon: "transfers" },
            { text: qsTr("Settings"), icon: "settings" }
        ]
    }

    Component {
        id: allPages

        // The pages keep their width, and leave the pane's half alone: those without a pane would
        // have to be arranged anew whenever they are shown.
        Item {
            id: shown

            readonly property var list: [regionsPage, installedPage.item,
                                         transfersPage.item][window.page] || null
            readonly property bool hasPane: window.roomy && list !== null && list.hasDetails

            function showDetails(id) {
                if (hasPane)
                    list.chosenId = id
                else
                    sheet.show(id)
            }
            function goBack() {
                return window.page === 0 && regionsPage.goBack()
            }
            function focusSearch() {
                regionsPage.focusSearch()
            }

            StackLayout {
                currentIndex: window.page
                anchors.fill: parent

                RegionsPage {
                    id: regionsPage

                    objectName: "regionsPage"
                    update: window.update
                    newerVersion: window.newerVersion
                    onUpdateAsked: window.showUpdate()
                    focus: window.page === 0
                    detailsBeside: shown.hasPane
                    onSheetAsked: id => shown.showDetails(id)
                }
                LazyPage {
                    id: installedPage

                    current: window.page === 1
                    sourceComponent: InstalledPage {
                        objectName: "installedPage"
                        update: window.update
                        newerVersion: window.newerVersion
                        onUpdateAsked: window.showUpdate()
                        focus: true
                        freeSpaceElsewhere: window.wide
                        detailsBeside: shown.hasPane
                        onSheetAsked: id => shown.showDetails(id)
                        onRemovalAsked: id => removal.ask(id)
                        onBrowsingAsked: window.show(0)
                    }
                }
                LazyPage {
                    id: transfersPage

                    current: window.page === 2
                    sourceComponent: TransfersPage {
                        objectName: "transfersPage"
                        focus: true
                        detailsBeside: shown.hasPane
                        onSheetAsked: id => shown.showDetails(id)
                        onBrowsingAsked: window.show(0)
                    }
                }
                LazyPage {
                    current: window.page === 3
                    sourceComponent: SettingsPage {
                        objectName: "settingsPage"
                        focus: true
                        update: window.update
                        newerVersion: window.newerVersion
                        onUpdateAsked: window.showUpdate()
                    }
                }
                LazyPage {
                    current: window.page === window.updatePage
                    sourceComponent: UpdatePage {
                        objectName: "updatePage"
                        focus: true
                        update: window.update
                        newerVersion: window.newerVersion
                        onBackAsked: window.goBack()
                    }
                }
            }
            Loader {
                active: shown.hasPane
                width: Math.floor(shown.width / 2)
                height: parent.height
                anchors.right: parent.right
                sourceComponent: DetailsPane {
                    objectName: "detailsPane"
                    regionId: shown.hasPane ? shown.list.detailId : ""
                    onRemovalAsked: id => removal.ask(id)
                }
            }
            // The dialogs are made when they are asked for.
            Loader {
                id: sheet

                function show(id) {
                    active = true
                    item.dialog.show(id)
                }
                function close() {
                    if (item)
                        item.dialog.close()
                }

                objectName: "regionSheet"
                active: false
                sourceComponent: Item {
                    readonly property alias dialog: regionSheet

                    RegionSheet {
                        id: regionSheet

                        onRemovalAsked: id => removal.ask(id)
                    }
                }
            }
            Loader {
                id: removal

                readonly property bool counted: item !== null && item.dialog.counted

                function ask(id) {
                    active = true
                    item.dialog.ask(id)
                }
                function close() {
                    if (item)
                        item.dialog.close()
                }

                objectName: "removeDialog"
                active: false
                sourceComponent: Item {
                    readonly property alias dialog: removeDialog

                    RemoveDialog {
                        id: removeDialog
                    }
                }
            }
            Connections {
                target: session.installer
                function onRemoved(id, freedBytes) {
                    var name = session.regions.get(id).name || ""
                    session.noticed(qsTr("%1 is removed; %2 are free again.")
                                        .arg(name).arg(Words.size(freedBytes)), false)
                }
            }
        }
    }

    Loader {
        id: notice

        function show(words, error) {
            active = true
            item.text = words
            item.isError = error
            visible = true
            if (error)
                hide.stop()
            else
                hide.restart()
        }

        objectName: "notice"
        active: false
        visible: false
        width: Math.min(parent.width - 32, 480)
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.horizontalCenterOffset: window.wide ? (Theme.mirrored ? -116 : 116) : 0
        anchors.bottom: parent.bottom
        anchors.bottomMargin: window.wide ? 24 : 64 + 12
        sourceComponent: Banner {
            closable: true
            border.width: 1
            border.color: letters
            onClosed: notice.visible = false
        }

        Timer {
            id: hide

            interval: 6000
            onTriggered: notice.visible = false
        }
    }
}
