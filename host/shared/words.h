// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

/** Numbers in words for QML: the singleton Words of the module VexaHost. See RegionWords. */
class Words : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /** A size in bytes for people: "850 kB", "7.1 MB". */
    Q_INVOKABLE QString size(qlonglong bytes) const;
    /** A time span in ms for people: "2 min", "1 h 5 min". */
    Q_INVOKABLE QString duration(qlonglong ms) const;
};
