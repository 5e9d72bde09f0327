// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/** The details of the region that is chosen in the list beside it. */
FocusScope {
    id: pane

    property string regionId
    readonly property bool empty: details.item === null || details.item.empty

    signal removalAsked(string id)

    LazyPage {
        id: details

        current: pane.regionId !== ""
        visible: !pane.empty
        anchors.fill: parent
        sourceComponent: Flickable {
            id: view

            readonly property bool empty: region.regionId === undefined
            readonly property var region: facts.region
            readonly property bool failed: region.state === "failed"

            clip: true
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar { }

            // No binding: asking a layout for its height may make it find another one, in a loop.
            function measure() {
                contentHeight = column.implicitHeight + 64
                // A little above the middle, where the eye looks for it.
                column.y = Math.max(32, Math.round((height - column.implicitHeight) * 0.4))
            }

            onHeightChanged: Qt.callLater(measure)

            ColumnLayout {
                id: column

                x: (parent.width - width) / 2
                width: Math.min(view.width - 48, 400)
                spacing: 4
                onImplicitHeightChanged: Qt.callLater(view.measure)
                Component.onCompleted: view.measure()

                Rectangle {
                    Layout.alignment: Qt.AlignHCenter
                    Layout.bottomMargin: Theme.unit
                    implicitWidth: 96
                    implicitHeight: 96
                    radius: 48
                    color: view.failed ? Theme.dangerTint
                                       : view.region.installed ? Theme.accent : Theme.accentTint

                    Icon {
                        anchors.centerIn: parent
                        size: 48
                        name: view.failed ? "warning"
                              : view.region.installed ? "check"
                              : view.region.hasChildren ? "globe" : "map"
                        color: view.failed ? Theme.danger
                                           : view.region.installed ? Theme.accentText : Theme.accent
                    }
                }
                TextLabel {
                    text: view.region.name || ""
                    font.pixelSize: Theme.title
                    font.weight: Font.DemiBold
                    horizontalAlignment: Text.AlignHCenter
                    Layout.fillWidth: true
                    Accessible.role: Accessible.Heading
                }
                TextLabel {
                    visible: text !== ""
                    text: view.region.path || ""
                    color: Theme.secondaryText
                    font.pixelSize: 14
                    horizontalAlignment: Text.AlignHCenter
                    Layout.fillWidth: true
                }
                TextLabel {
                    visible: view.region.hasChildren === true
                    text: qsTr("%n map(s) inside", "", view.region.childCount || 0)
                    color: Theme.secondaryText
                    font.pixelSize: 14
                    horizontalAlignment: Text.AlignHCenter
                    Layout.fillWidth: true
                }
                Card {
                    // A part of the world may be nothing but a folder of maps.
                    visible: view.region.downloadable === true || view.region.installed === true
                    Layout.fillWidth: true
                    Layout.topMargin: Theme.gap

                    RegionDetails {
                        id: facts

                        regionId: pane.regionId
                        Layout.fillWidth: true
                        Layout.margins: Theme.gap
                        Layout.topMargin: Theme.unit
                        Layout.bottomMargin: Theme.unit
                        onRemovalAsked: id => pane.removalAsked(id)
                    }
                }
            }
        }
    }
    EmptyState {
        visible: pane.empty
        iconName: "map"
        title: qsTr("Choose a map")
        text: qsTr("Its size, and what can be done with it, are shown here.")
        anchors.centerIn: parent
        width: Math.min(parent.width - 48, 360)
    }
    Rectangle {
        width: 1
        height: parent.height
        anchors.left: parent.left
        color: Theme.line
    }
}
