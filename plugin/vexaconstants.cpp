// SPDX-License-Identifier: MIT
#include "plugin/vexaconstants.h"

#include "plugin/dataroot.h"

namespace {
const QString SettingsFileName = QStringLiteral("vexa");
const QString MountPointMyDocs = DataRoot::mountPoint();
const QString TmpDirPath = QStringLiteral("/MyDocs/.vexa/tmp/");
const QString TmpDirPathUnzippedArchive = TmpDirPath + QLatin1String("unzipped");
const QString HttpRange = QStringLiteral("Range");
const QString HttpContentRange = QStringLiteral("Content-Range");
const QString HttpContentLength = QStringLiteral("Content-Length");
const QString HttpRangeValueBytes = QStringLiteral("bytes=");
const QString HttpContentRangeSeparator = QStringLiteral("/");
} // namespace

// References, because hosts were linked against references; the order above is the order in which
// the values are made.
const QString &VEXA_SETTINGS_FILE_NAME = SettingsFileName;
const QString &MOUNT_POINT_MY_DOCS = MountPointMyDocs;
const QString &TMP_DIR_PATH = TmpDirPath;
const QString &TMP_DIR_PATH_UNZIPPED_ARCHIVE = TmpDirPathUnzippedArchive;
const QString &HTTP_RANGE_TOKEN = HttpRange;
const QString &HTTP_CONTENT_RANGE_TOKEN = HttpContentRange;
const QString &HTTP_CONTENT_LENGTH_TOKEN = HttpContentLength;
const QString &HTTP_RANGE_VALUE_BYTES_TOKEN = HttpRangeValueBytes;
const QString &HTTP_CONTENT_RANGE_SEPARATOR_TOKEN = HttpContentRangeSeparator;
