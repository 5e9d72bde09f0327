// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import VexaHost 1.0
import VexaMaps 1.0

/**
 * A list of regions, in a column of readable width, for fingers, mouse and keyboard: the arrows,
 * PageUp, PageDown, Home and End move, Enter and the space bar press the row, Tab leads to its
 * buttons.
 */
ListView {
    id: list

    property alias search: rows.search
    property alias parentId: rows.parentId
    property alias treeMode: rows.treeMode
    property alias filter: rows.filter
    readonly property int shown: rows.count
    /** The region whose details are asked for, and the one that is marked for it. */
    property string chosenId
    property string markedId
    /** The chosen region; the first one while that is not in the list. */
    property string detailId

    signal pressed(var region)

    /** Whether the row that the keyboard would press is to be marked: not for fingers. */
    property bool byKeyboard: false

    readonly property real headerHeight: headerItem ? headerItem.height : 0

    clip: true
    activeFocusOnTab: true
    keyNavigationEnabled: true
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    cacheBuffer: 0 // until the first rows are there
    currentIndex: 0
    Accessible.role: Accessible.List
    onMovementStarted: byKeyboard = false
    onActiveFocusChanged: byKeyboard = false
    // A header grows upwards when its text wraps: out of sight, unless the list follows.
    onHeaderHeightChanged: {
        if (contentY <= 0)
            Qt.callLater(positionViewAtBeginning)
    }
    // The release, too: Tab is pressed elsewhere and released here.
    Keys.onReleased: byKeyboard = true
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown)
            goTo(currentIndex + rowsInSight())
        else if (event.key === Qt.Key_PageUp)
            goTo(currentIndex - rowsInSight())
        else if (event.key === Qt.Key_Home)
            goTo(0)
        else if (event.key === Qt.Key_End)
            goTo(rows.count - 1)
        else
            return
        event.accepted = true
    }
    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()
    Keys.onSpacePressed: press()

    function findDetail() {
        detailId = rows.rowOf(chosenId) >= 0 ? chosenId
                                             : rows.count > 0 ? rows.get(0).regionId : ""
    }

    // While the first rows come, those beyond the sight would be made for places that they lose.
    // Later loads change little, and a list that is scrolled must stay where it is.
    function prepareRows() {
        if (!session.regions || !session.regions.loading)
            cacheBuffer = 480
    }

    onChosenIdChanged: findDetail()
    Component.onCompleted: {
        findDetail()
        prepareRows()
    }

    Connections {
        target: session.regions
        function onLoadingChanged() { list.prepareRows() }
    }

    Connections {
        target: rows
        function onCountChanged() { Qt.callLater(list.findDetail) }
        function onLayoutChanged() { Qt.callLater(list.findDetail) }
        function onRowsRemoved() { Qt.callLater(list.findDetail) }
        function onRowsInserted() { Qt.callLater(list.findDetail) }
    }

    function press() {
        byKeyboard = true
        if (currentIndex >= 0 && currentIndex < rows.count)
            pressed(rows.get(currentIndex))
    }

    function rowsInSight() {
        return currentItem ? Math.max(1, Math.floor(height / currentItem.height)) : 1
    }

    /** To this row, or to the end that is nearer; at once, where the arrows glide. */
    function goTo(index) {
        currentIndex = Math.max(0, Math.min(index, rows.count - 1))
        if (currentIndex === 0)
            positionViewAtBeginning() // with the header
        else
            positionViewAtIndex(currentIndex, ListView.Contain)
    }

    model: RegionFilterModel {
        id: rows

        regions: session.regions
    }

    ScrollBar.vertical: ScrollBar {
        id: bar

        padding: 2
        contentItem: Rectangle {
            implicitWidth: 6
            radius: 3
            color: Theme.secondaryText
            opacity: bar.policy === ScrollBar.AlwaysOn || (bar.active && bar.size < 1.0) ? 0.7 : 0
        }
    }
}
