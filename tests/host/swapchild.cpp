// SPDX-License-Identifier: MIT
// A program that exchanges or removes data sets, for tests that kill it. Its argument is what to
// do: swap, undo, clear, discard, recover, check or check-as-nobody. It says "true" or "false", the
// number of the Recovery for recover, and on the next line the text.
#include "catalog/mapcatalog.h"
#include "host/shared/datasetlock.h"
#include "host/shared/datasetswap.h"
#include <cstdio>
#include <QCoreApplication>
#include <QString>
#include <unistd.h>

namespace {

constexpr unsigned Nobody = 65534;

void say(const QByteArray &result, const QString &text)
{
    std::printf("%s\n%s\n", result.constData(), text.toUtf8().constData());
}

bool carryOut(const QString &order, DataSetSwap *dataSets)
{
    if (order.startsWith(QLatin1String("check")))
        return dataSets->check();
    if (order == QLatin1String("clear"))
        return dataSets->clearBackup();
    if (order == QLatin1String("discard"))
        return dataSets->discardPrepared();
    MapCatalog catalog;
    return order == QLatin1String("swap") ? dataSets->swap(&catalog) : dataSets->undo(&catalog);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QString order = QCoreApplication::arguments().value(1);
    // Nothing is write-protected for root.
    const bool asNobody = order == QLatin1String("check-as-nobody");
    if (asNobody && geteuid() == 0 && setresuid(Nobody, Nobody, Nobody) != 0)
        return 2;
    DataSetLock lock;
    if (!order.startsWith(QLatin1String("check")) && !lock.tryLock())
        return 2;
    if (order == QLatin1String("recover")) {
        QString text;
        const auto recovery = DataSetSwap::recover(&text);
        say(QByteArray::number(int(recovery)), text);
        return 0;
    }
    DataSetSwap dataSets;
    const bool done = carryOut(order, &dataSets);
    say(done ? "true" : "false", dataSets.errorString());
    return done ? 0 : 1;
}
