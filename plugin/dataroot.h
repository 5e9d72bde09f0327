// SPDX-License-Identifier: MIT
#ifndef VEXA_DATAROOT_H
#define VEXA_DATAROOT_H

#include "vexa_export.h"
#include <QString>

/**
 * The place on the device below which all map data lies.
 *
 * Every path that begins with "/home/user/MyDocs" is formed here and nowhere else. The environment
 * variable VEXA_MYDOCS (a folder) replaces that prefix, for desktops, tests and the demo. It is
 * read at every call, so a program may set it before it makes its first catalogue.
 *
 * Paths in the user's own home, such as the folder where downloads grow, are not formed here: they
 * follow QDir::homePath().
 *
 * Any thread may call this as long as none changes the environment.
 */
class VEXA_EXPORT DataRoot
{
public:
    /** The root itself, "/home/user/MyDocs" unless VEXA_MYDOCS names another; no trailing slash. */
    static QString myDocs();

    /** The folder of all map data, "/home/user/MyDocs/cities". */
    static QString cities();

    /** The catalogue folder of the data set with this path suffix: cities()/Tessarin and suffix. */
    static QString catalogFolder(const QString &pathSuffix = QString());

    /** The tile-cache folder of the data set with this path suffix: cities()/diskcache and suffix.
     */
    static QString tileCacheFolder(const QString &pathSuffix = QString());

    /** The path whose file system the free space is asked of, "/home/user/MyDocs/.". */
    static QString mountPoint();
};

#endif
