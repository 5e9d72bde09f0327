// SPDX-License-Identifier: MIT
#include "host/shared/diskprobe.h"

#include "plugin/vexaconstants.h"
#include <QByteArray>
#include <QDir>
#include <QTemporaryFile>

namespace {

constexpr int ProbeSize = 4 * 1024 * 1024; // bytes: the most that the engine writes at once

} // namespace

QString DiskProbe::trouble()
{
    QTemporaryFile file(QDir::homePath() + TMP_DIR_PATH + QLatin1String("probe.XXXXXX"));
    if (file.open() && file.write(QByteArray(ProbeSize, '\0')) == ProbeSize && file.flush())
        return QString();
    return tr("The disk takes no more data. Is it full?");
}
