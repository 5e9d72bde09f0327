// SPDX-License-Identifier: MIT
// The map regions, with what can be done with each. A press installs or removes.
import QtQuick 2.15
import QtQuick.Window 2.15
import Vexa 1.0 // vexaBaseURI

Window {
    id: window

    property string activeId // of the region that is being installed
    property string activeText

    function install(region) {
        activeId = region.id
        activeText = "waits"
        downloads.download(region.id, vexaBaseURI + region.downloadUrl,
                           catalog.mapBaseDirectory + "/diskcache/", true)
    }

    visible: true
    width: 360
    height: 640
    title: "Maps from " + vexaBaseURI

    Connections {
        target: downloads
        function onProgress(operation, url, id, bytesReceived, bytesTotal) {
            if (operation === 2 && bytesTotal > 0)
                window.activeText = Math.floor(100 * bytesReceived / bytesTotal) + " %"
        }
        function onFinished(operation, url, id) {
            if (operation !== 4) // the step that puts the tiles in place
                return
            catalog.addInstalledRegion(id, downloads.unpackedFileList)
            if (id === window.activeId)
                window.activeId = ""
        }
        function onError(operation, id, error, url) {
            downloads.cancel(url) // the steps behind it would run all the same
            window.activeText = "failed"
        }
    }

    ListView {
        anchors.fill: parent
        model: catalog.availableRegions
        delegate: Item {
            width: ListView.view.width
            height: 56
            Text {
                anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
                font.pixelSize: 18
                text: modelData.localizedName || modelData.name
            }
            Text {
                anchors { right: parent.right; rightMargin: 16; verticalCenter: parent.verticalCenter }
                font.pixelSize: 15
                color: modelData.installed ? "darkgreen" : "dimgray"
                text: modelData.id === window.activeId ? window.activeText
                    : modelData.installed ? "installed"
                    : (modelData.downloadSize / 1e6).toFixed(1) + " MB"
            }
            MouseArea {
                anchors.fill: parent
                onClicked: {
                    if (modelData.installed)
                        catalog.deleteInstalledRegion(modelData.id)
                    else
                        window.install(modelData)
                }
            }
        }
    }
}
