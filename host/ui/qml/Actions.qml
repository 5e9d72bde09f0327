// SPDX-License-Identifier: MIT
// What can be asked for a region from several places; a refusal is told to the user.
pragma Singleton
import QtQuick 2.15

QtObject {
    /** Why nothing can be installed or removed now, in words; empty if it can be. */
    property string blockade

    function install(id) {
        if (blockade !== "")
            session.noticed(blockade, true)
        else if (!session.installer.install(id))
            session.noticed(session.installer.refusal(), true)
    }

    function cancel(id) {
        if (blockade !== "")
            session.noticed(blockade, true)
        else if (!session.installer.cancel(id))
            session.noticed(session.installer.refusal(), true)
    }

    // At any time: it changes nothing but the list.
    function dismiss(id) {
        if (!session.installer.dismiss(id))
            session.noticed(session.installer.refusal(), true)
    }

    function remove(id) {
        if (blockade !== "")
            session.noticed(blockade, true)
        else if (!session.installer.remove(id))
            session.noticed(session.installer.refusal(), true)
    }
}
