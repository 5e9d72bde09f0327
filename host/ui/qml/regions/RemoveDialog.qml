// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VexaHost 1.0
import VexaMaps 1.0

/** Says what a removal frees and what stays, and removes. */
ConfirmDialog {
    id: dialog

    property string regionId
    readonly property bool counted: preview.ready
    readonly property RemovalPreview preview: RemovalPreview {
        regions: dialog.visible ? session.regions : null
        regionId: dialog.regionId
    }

    function ask(id) {
        regionId = id
        heading = qsTr("Remove %1?").arg(session.regions.get(id).name)
        open()
    }

    text: {
        if (!preview.ready)
            return qsTr("Looking at what this frees")
        var words = qsTr("This frees %1 (%2).").arg(Words.size(preview.freedBytes))
                                               .arg(qsTr("%n file(s)", "", preview.freedFiles))
        if (preview.keptFiles > 0)
            words += "\n" + qsTr("%1 (%2) stay, because other installed maps need them.")
                                .arg(Words.size(preview.keptBytes))
                                .arg(qsTr("%n file(s)", "", preview.keptFiles))
        return words
    }
    dangerous: true
    acceptText: qsTr("Remove")
    onAccepted: Actions.remove(regionId)
}
