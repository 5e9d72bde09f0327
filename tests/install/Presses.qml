// SPDX-License-Identifier: MIT
// Shows the example's page, presses Finland's row twice as a user would, and prints the rows
// whenever they are as they should be next. The page's file is the program's second argument.
import QtQuick 2.15
import Vexa 1.0

QtObject {
    id: driver

    property var page
    property int step: 0
    property Timer look: Timer {
        interval: 20
        repeat: true
        running: true
        onTriggered: driver.goOn()
    }

    function rowsBelow(item, found) {
        const texts = []
        let area = null
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i]
            if (child.text !== undefined)
                texts.push(child.text)
            else if (child.containsMouse !== undefined)
                area = child
            else
                rowsBelow(child, found)
        }
        if (area)
            found.push({ name: texts[0], state: texts[1], area: area })
        return found
    }

    function goOn() {
        const rows = rowsBelow(page.contentItem, [])
        const finland = rows.find(row => row.name === "Finland")
        if (!finland)
            return
        if (finland.state === "failed")
            Qt.exit(1)
        if ((finland.state === "installed") !== (step === 1) || /%|waits/.test(finland.state))
            return
        console.log(rows.map(row => row.name + ": " + row.state).join(", "))
        if (++step === 3)
            Qt.exit(0)
        else
            finland.area.clicked(null)
    }

    Component.onCompleted: {
        log.setLogLevel(4) // the library's own, if the module and the program have the same one
        const component = Qt.createComponent("file://" + Qt.application.arguments[2])
        page = component.createObject(null)
        if (!page) {
            console.log(component.errorString())
            Qt.exit(1)
        }
    }
}
