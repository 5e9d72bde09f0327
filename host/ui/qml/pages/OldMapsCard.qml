// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** The maps of before the last update, while they are kept: the way back, and the way to space. */
Card {
    id: card

    property var update
    /** The update has just ended: the question is only whether they are kept. */
    property bool fresh: false

    visible: update.backupVersion !== ""
    title: qsTr("Old maps")

    SettingRow {
        text: qsTr("Kept version")
        value: card.update.backupVersion
    }
    SettingRow {
        text: qsTr("Size")
        value: card.update.removing ? qsTr("Being removed")
             : card.update.backupSize < 0 ? qsTr("Being measured")
                                          : Words.size(card.update.backupSize)
    }
    ButtonGroup {
        Layout.fillWidth: true
        Layout.margins: Theme.gap
        Layout.topMargin: Theme.unit
        Layout.bottomMargin: Theme.unit

        PushButton {
            visible: card.fresh
            enabled: !card.update.running && !card.update.removing
            primary: true
            text: qsTr("Keep old maps")
            iconName: "check"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.maximumWidth: 400
            onClicked: card.update.acknowledge()
        }
        PushButton {
            visible: !card.fresh
            enabled: !card.update.running && !card.update.removing
            text: qsTr("Go back to version %1").arg(card.update.backupVersion)
            iconName: "back"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.maximumWidth: 400
            onClicked: goingBack.open()
        }
        PushButton {
            enabled: !card.update.running && !card.update.removing
            dangerous: true
            text: card.fresh ? qsTr("Remove old maps") : qsTr("Remove the backup")
            iconName: "trash"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.maximumWidth: 400
            onClicked: removal.open()
        }
    }

    ConfirmDialog {
        id: goingBack

        objectName: "goBackDialog"
        heading: qsTr("Go back to version %1?").arg(card.update.backupVersion)
        text: {
            var words = qsTr("The old maps are put in use again. The newer ones stay on this device "
                             + "until you remove them.")
            if (card.update.lostRegions.length > 0)
                words += "\n" + qsTr("These maps were installed since and are not among the old ones: "
                                     + "%1.").arg(card.update.lostRegions.join(", "))
            return words
        }
        acceptText: qsTr("Go back")
        dangerous: card.update.lostRegions.length > 0
        onAccepted: card.update.goBack()
    }
    ConfirmDialog {
        id: removal

        objectName: "removeBackupDialog"
        heading: qsTr("Remove the old maps?")
        text: (card.update.backupSize > 0
               ? qsTr("This frees %1.").arg(Words.size(card.update.backupSize)) + " " : "")
              + qsTr("You cannot go back to version %1 afterwards.").arg(card.update.backupVersion)
        acceptText: qsTr("Remove")
        dangerous: true
        onAccepted: card.update.removeBackup()
    }
}
