// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import VexaHost 1.0
import VexaMaps 1.0

/** The state of the network and of the disk, in two lines at the foot of the side bar. */
ColumnLayout {
    id: summary

    spacing: Theme.unit

    // Where neither the system nor the user tells, a mobile network is only assumed.
    readonly property bool networkKnown: session.network.available || session.network.manual
                                         || session.network.wifi

    Repeater {
        model: [
            {
                icon: "wifi",
                text: !summary.networkKnown ? ""
                      : !session.network.online ? qsTr("No network")
                      : session.network.wifi ? qsTr("Wi-Fi or cable")
                                             : qsTr("Mobile network")
            },
            {
                icon: "device",
                text: session.freeSpace > 0 ? qsTr("%1 free").arg(Words.size(session.freeSpace)) : ""
            }
        ]

        RowLayout {
            visible: modelData.text !== ""
            spacing: Theme.unit
            Layout.fillWidth: true

            Icon {
                name: modelData.icon
                size: 18
                color: Theme.secondaryText
                Layout.alignment: Qt.AlignTop
            }
            TextLabel {
                text: modelData.text
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                Layout.fillWidth: true
            }
        }
    }
}
