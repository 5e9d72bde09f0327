// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VexaMaps 1.0

/** Says that there are newer maps, or that an update keeps everything else waiting. */
Loader {
    id: lazy

    property var update
    property string newerVersion
    readonly property string text: update.blockade !== "" ? update.blockade
        : newerVersion !== "" ? qsTr("The server has newer maps: version %1.").arg(newerVersion)
                              : ""

    signal triggered

    active: text !== ""
    visible: active
    sourceComponent: Banner {
        iconName: "update"
        text: lazy.text
        actionText: lazy.update.blockade !== "" ? qsTr("Show the update")
                                                : qsTr("Update all maps")
        onTriggered: lazy.triggered()
    }
}
