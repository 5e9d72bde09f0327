// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VexaMaps 1.0

/** Says that there are newer maps, or that an update keeps everything else waiting. */
Banner {
    id: banner

    property var update
    property string newerVersion

    visible: text !== ""
    iconName: "update"
    text: update.blockade !== "" ? update.blockade
          : newerVersion !== "" ? qsTr("The server has newer maps: version %1.").arg(newerVersion)
                                : ""
    actionText: update.blockade !== "" ? qsTr("Show the update") : qsTr("Update all maps")
}
