// SPDX-License-Identifier: MIT
#ifndef VEXA_VEXACONSTANTS_H
#define VEXA_VEXACONSTANTS_H

#include "vexa_export.h"
#include <QString>

/** Organisation and application name of the download-state settings: "vexa". */
extern VEXA_EXPORT const QString &VEXA_SETTINGS_FILE_NAME;

/**
 * The path whose file system the free space is asked of: "/home/user/MyDocs/.", or the one below
 * VEXA_MYDOCS if that was set when the library was loaded; DataRoot::mountPoint() follows changes.
 */
extern VEXA_EXPORT const QString &MOUNT_POINT_MY_DOCS;

/** Folder below the home folder in which downloads grow: "/MyDocs/.vexa/tmp/". */
extern VEXA_EXPORT const QString &TMP_DIR_PATH;

/** Folder below the home folder into which archives are unpacked: "/MyDocs/.vexa/tmp/unzipped". */
extern VEXA_EXPORT const QString &TMP_DIR_PATH_UNZIPPED_ARCHIVE;

/** HTTP header that asks for a part of a file: "Range". */
extern VEXA_EXPORT const QString &HTTP_RANGE_TOKEN;

/** HTTP header that tells which part of which whole is sent: "Content-Range". */
extern VEXA_EXPORT const QString &HTTP_CONTENT_RANGE_TOKEN;

/** HTTP header that tells the size of what is sent: "Content-Length". */
extern VEXA_EXPORT const QString &HTTP_CONTENT_LENGTH_TOKEN;

/** Unit in front of a range's first byte: "bytes=". */
extern VEXA_EXPORT const QString &HTTP_RANGE_VALUE_BYTES_TOKEN;

/** What stands between the part and the whole in a Content-Range: "/". */
extern VEXA_EXPORT const QString &HTTP_CONTENT_RANGE_SEPARATOR_TOKEN;

#endif
