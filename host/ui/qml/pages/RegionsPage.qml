// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** All maps that the server offers: a tree to go down in, and a search over all of it. */
FocusScope {
    id: page

    readonly property bool searching: search.words !== ""
    readonly property bool empty: session.isOpen && !session.regions.loading
                                  && session.regions.count === 0
    readonly property string currentId: levels.currentItem ? levels.currentItem.parentId : ""
    property var current: ({})

    /** The update of all maps, and the version that it would lead to. */
    property var update: session.update
    property string newerVersion: session.newerVersion

    /** Details are shown beside the list: of what is chosen, else of the level that is open. */
    property bool detailsBeside: false
    readonly property bool hasDetails: !empty && (!searching || results.shown > 0)
    readonly property string detailId: chosenId !== "" ? chosenId : searching ? "" : currentId
    property string chosenId

    signal sheetAsked(string id)
    signal updateAsked

    function focusSearch() {
        search.forceActiveFocus()
        search.selectAll()
    }

    /** One step back; false if there is none. */
    function goBack() {
        if (search.text !== "") {
            search.reset()
            search.focus = false
            levels.forceActiveFocus()
            return true
        }
        if (levels.depth <= 1)
            return false
        levels.pop()
        levels.currentItem.forceActiveFocus()
        return true
    }

    function press(region) {
        if (region.hasChildren)
            goDown(region.regionId)
        else
            sheetAsked(region.regionId)
    }

    function goDown(id) {
        search.reset()
        levels.push(level, { parentId: id })
        levels.currentItem.forceActiveFocus()
    }

    function refreshCurrent() {
        current = currentId === "" ? {} : session.regions.get(currentId)
        if (currentId !== "" && current.regionId === undefined)
            levels.pop(null) // The new catalogue does not have it.
    }

    onCurrentIdChanged: {
        chosenId = ""
        refreshCurrent()
    }
    onSearchingChanged: chosenId = ""

    Connections {
        target: session.regions
        function onDataChanged() { page.refreshCurrent() }
        function onCountChanged() { page.refreshCurrent() }
    }

    ColumnLayout {
        width: page.detailsBeside ? Math.ceil(page.width / 2) : page.width
        height: parent.height
        anchors.left: parent.left
        spacing: 0

        PageHeader {
            readonly property bool below: page.currentId !== "" && !page.searching

            title: below ? page.current.name || "" : qsTr("Maps to download")
            subtitle: below ? page.current.path || qsTr("All maps") : ""
            canGoBack: below
            onBack: page.goBack()
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.column

            IconButton {
                visible: !session.refreshing
                enabled: session.ready
                text: qsTr("Look for new maps")
                iconName: "refresh"
                onClicked: session.refresh()
            }
            BusyMark {
                visible: session.refreshing || session.regions.loading
                Layout.rightMargin: Theme.unit
            }
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
        SearchField {
            id: search

            objectName: "search"
            visible: !page.empty
            placeholderText: qsTr("Search all maps")
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.column - 32
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
            Layout.bottomMargin: 12
            Keys.onDownPressed: (page.searching ? results : levels.currentItem).forceActiveFocus()
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            StackView {
                id: levels

                anchors.fill: parent
                visible: !page.searching && !page.empty
                initialItem: level
                // The list below must not shine through while one slides.
                pushEnter: null
                pushExit: null
                popEnter: null
                popExit: null
            }
            RegionList {
                id: results

                objectName: "results"
                anchors.horizontalCenter: parent.horizontalCenter
                height: parent.height
                width: Math.min(parent.width, Theme.column)
                visible: page.searching
                markedId: page.detailsBeside ? page.chosenId : ""
                search: search.words
                // Out of sight it needs no rows: in no region.
                treeMode: !page.searching
                parentId: "none"
                onPressed: region => page.press(region)
                delegate: BrowseRow {
                    showPath: true
                    onClicked: page.press(region)
                }
            }
            Loader {
                active: page.searching && results.shown === 0
                anchors.centerIn: parent
                width: Math.min(parent.width - 48, 400)
                sourceComponent: EmptyState {
                    iconName: "search"
                    title: qsTr("No map has this name")
                    text: qsTr("Try fewer letters, or the name in another language.")
                }
            }
            Loader {
                active: page.empty
                anchors.centerIn: parent
                width: Math.min(parent.width - 48, 400)
                sourceComponent: EmptyState {
                    objectName: "noCatalog"
                    iconName: "globe"
                    title: qsTr("No maps are known yet")
                    text: qsTr("Fetch the list of maps from the server first. It is small; the "
                               + "maps themselves are downloaded one by one, as you choose.")
                    actionText: qsTr("Fetch the list")
                    actionIcon: "refresh"
                    busy: session.refreshing || !session.ready
                    onTriggered: session.refresh()
                }
            }
        }
    }

    Component {
        id: level

        FocusScope {
            property alias parentId: list.parentId

            RegionList {
                id: list

                anchors.horizontalCenter: parent.horizontalCenter
                height: parent.height
                width: Math.min(parent.width, Theme.column)
                focus: true
                markedId: page.detailsBeside ? page.chosenId : ""
                treeMode: true
                onPressed: region => page.press(region)
                delegate: BrowseRow {
                    onClicked: page.press(region)
                }
                header: page.currentId === "" || !page.current.downloadable ? null : whole
            }
        }
    }

    // A region that has others inside can be installed as a whole, too.
    Component {
        id: whole

        Item {
            width: Math.min(levels.width, Theme.column)
            implicitHeight: card.implicitHeight + 12

            Rectangle {
                id: card

                x: Theme.gap
                width: parent.width - 32
                implicitHeight: lines.implicitHeight + 24
                radius: Theme.radius
                color: Theme.accentTint

                RowLayout {
                    id: lines

                    anchors.fill: parent
                    anchors.margins: 12
                    anchors.leftMargin: Theme.gap
                    spacing: 12

                    ColumnLayout {
                        spacing: 2
                        Layout.fillWidth: true

                        TextLabel {
                            text: qsTr("All of %1").arg(page.current.name || "")
                            font.weight: Font.Medium
                            Layout.fillWidth: true
                        }
                        TextLabel {
                            text: (page.current.pending || page.current.installed
                                   ? page.current.sentence : "")
                                  || (page.current.downloadSize > 0
                                      ? Words.size(page.current.downloadSize) : "")
                            color: Theme.secondaryText
                            font.pixelSize: 14
                            Layout.fillWidth: true
                        }
                    }
                    PushButton {
                        text: page.current.installed || page.current.pending
                              ? qsTr("Details") : qsTr("Install")
                        primary: !page.current.installed && !page.current.pending
                        enabled: !primary || Actions.blockade === ""
                        onClicked: {
                            if (primary)
                                Actions.install(page.currentId)
                            else
                                page.sheetAsked(page.currentId)
                        }
                    }
                }
            }
        }
    }
}
