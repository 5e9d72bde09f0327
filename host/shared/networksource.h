// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/** What a platform tells of the network that its traffic takes. */
struct NetworkReport
{
    enum class Standing {
        Awaited, ///< asked, and not answered yet
        Absent, ///< nobody there who could tell
        Silent, ///< told before, and cannot be heard any more
        Told, ///< the members below hold
    };
    Standing standing = Standing::Awaited;
    bool online = false; ///< there is a network that leads to servers
    bool unmetered = false; ///< its traffic costs nothing: Wi-Fi or a cable, not a phone's hotspot
};

inline bool operator==(const NetworkReport &a, const NetworkReport &b)
{
    return a.standing == b.standing && a.online == b.online && a.unmetered == b.unmetered;
}

/** One way to learn from the platform how its network is. GUI thread. */
class NetworkSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual NetworkReport report() const = 0;

Q_SIGNALS:
    /** report() may give something else now. */
    void changed();
};
