// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import VexaMaps 1.0

/**
 * A dialog in the app's manner: at the lower edge of a narrow window, where thumbs are, else in
 * the middle. Escape, and a press beside it, close it.
 */
Dialog {
    id: dialog

    property string heading
    property string subheading
    default property alias contents: column.data
    readonly property bool narrow: parent !== null && parent.width < 720

    parent: Overlay.overlay
    modal: true
    focus: true
    padding: Theme.gap
    width: narrow ? parent.width : 480
    x: parent === null ? 0 : (parent.width - width) / 2
    y: parent === null ? 0 : narrow ? parent.height - height : (parent.height - height) / 2
    height: parent === null ? implicitHeight : Math.min(implicitHeight, parent.height - 32)
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    enter: null
    exit: null

    background: Rectangle {
        color: Theme.raised
        radius: 16
        border.width: 1
        border.color: Theme.line

        // The lower corners lie on the window's edge.
        Rectangle {
            visible: dialog.narrow
            anchors.bottom: parent.bottom
            width: parent.width
            height: 16
            color: parent.color
        }
    }
    Overlay.modal: Rectangle {
        color: Theme.shade
    }

    contentItem: Flickable {
        id: view

        interactive: contentHeight > height
        clip: interactive
        LayoutMirroring.enabled: Theme.mirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.heading

        // No binding: asking a layout for its height may make it find another one, in a loop.
        function measure() {
            implicitHeight = column.implicitHeight
            contentHeight = column.implicitHeight
        }

        ColumnLayout {
            id: column

            width: dialog.availableWidth
            spacing: Theme.unit
            onImplicitHeightChanged: Qt.callLater(view.measure)
            Component.onCompleted: view.measure()

            TextLabel {
                visible: dialog.subheading !== ""
                text: dialog.subheading
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                Layout.fillWidth: true
            }
            TextLabel {
                text: dialog.heading
                font.pixelSize: Theme.heading
                font.weight: Font.DemiBold
                Layout.fillWidth: true
                Layout.bottomMargin: Theme.unit
                Accessible.role: Accessible.Heading
            }
        }
    }
}
