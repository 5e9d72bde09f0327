// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import VexaMaps 1.0

/** A field for search words, with a button that clears it. */
TextField {
    id: control

    /** What is typed, once the typing has paused: a list need not follow every letter. */
    property string words
    /** How long a pause of the typing is, in ms. */
    property alias patience: pause.interval

    function reset() {
        text = ""
        words = ""
    }

    implicitHeight: Theme.touch
    leftPadding: Theme.mirrored ? Theme.touch : 48
    rightPadding: Theme.mirrored ? 48 : Theme.touch
    font.pixelSize: Theme.body
    color: Theme.text
    placeholderTextColor: Theme.secondaryText
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    selectByMouse: true
    horizontalAlignment: TextInput.AlignLeft
    inputMethodHints: Qt.ImhNoPredictiveText
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Accessible.searchEdit: true
    onTextChanged: pause.restart()

    background: Rectangle {
        radius: height / 2
        color: Theme.surface
        border.width: control.activeFocus ? 2 : 1
        border.color: control.activeFocus ? Theme.accent : Theme.line
    }

    Timer {
        id: pause

        interval: 120
        onTriggered: control.words = control.text.trim()
    }
    Icon {
        name: "search"
        color: Theme.secondaryText
        anchors.left: parent.left
        anchors.leftMargin: 14
        anchors.verticalCenter: parent.verticalCenter
    }
    IconButton {
        visible: control.text !== ""
        text: qsTr("Clear the search")
        iconName: "close"
        color: Theme.secondaryText
        anchors.right: parent.right
        onClicked: {
            control.reset()
            control.forceActiveFocus()
        }
    }
}
