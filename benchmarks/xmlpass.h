// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/measure.h"

#include <QFile>
#include <QStringList>
#include <QXmlStreamReader>

/** The peer of all readers: one bare pass over each of the files. Tells its time like a child. */
inline void passOver(const QStringList &paths)
{
    const Stopwatch watch;
    for (const QString &path : paths) {
        QFile file(path);
        if (!file.open(QFile::ReadOnly))
            qFatal("cannot read %s", qPrintable(path));
        QXmlStreamReader xml(&file);
        while (!xml.atEnd())
            xml.readNext();
        if (xml.hasError())
            qFatal("%s: %s", qPrintable(path), qPrintable(xml.errorString()));
    }
    tell(watch.figures());
}
