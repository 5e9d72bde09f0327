// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VexaHost 1.0
import VexaMaps 1.0

/** Says what a removal frees and what stays, and removes. */
ConfirmDialog {
    id: dialog

    property string regionId

    function ask(id) {
        var region = session.regions.get(id)
        var preview = session.regions.removalPreview(id)
        regionId = id
        heading = qsTr("Remove %1?").arg(region.name)
        text = qsTr("This frees %1 (%2).").arg(Words.size(preview.freedBytes))
                                          .arg(qsTr("%n file(s)", "", preview.freedFiles))
        if (preview.keptFiles > 0)
            text += "\n" + qsTr("%1 (%2) stay, because other installed maps need them.")
                               .arg(Words.size(preview.keptBytes))
                               .arg(qsTr("%n file(s)", "", preview.keptFiles))
        open()
    }

    dangerous: true
    acceptText: qsTr("Remove")
    onAccepted: Actions.remove(regionId)
}
