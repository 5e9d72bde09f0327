// SPDX-License-Identifier: MIT
// What can be asked for a region from several places; a refusal is told to the user.
pragma Singleton
import QtQuick 2.15

QtObject {
    function install(id) {
        if (!session.installer.install(id))
            session.noticed(session.installer.refusal(), true)
    }

    function cancel(id) {
        if (!session.installer.cancel(id))
            session.noticed(session.installer.refusal(), true)
    }

    function remove(id) {
        if (!session.installer.remove(id))
            session.noticed(session.installer.refusal(), true)
    }
}
