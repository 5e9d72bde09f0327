// SPDX-License-Identifier: MIT
#include "host/shared/datafolder.h"
#include "host/shared/loglines.h"
#include "host/ui/mapssession.h"
#include "host/ui/selftest.h"
#include "host/ui/uiengine.h"
#include "host/ui/uioptions.h"
#include <cstdio>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>

namespace {

constexpr int ExitUsage = 2;

QStringList argumentList(int argc, char *argv[])
{
    QStringList list;
    for (int i = 0; i < argc; ++i)
        list.append(QString::fromLocal8Bit(argv[i]));
    return list;
}

int usageError(const QString &text)
{
    std::fprintf(stderr, "%s\nTry \"vexa-maps-ui --help\".\n", qPrintable(text));
    return ExitUsage;
}

QSize windowSize(const UiOptions &options)
{
    if (options.size.isValid())
        return options.size;
    return QSize(1100, 760).boundedTo(QGuiApplication::primaryScreen()->availableSize());
}

int runApp(const UiOptions &options)
{
    // As the user chose it, before the settings move with the data folder.
    const QString baseUri =
        options.baseUri.isEmpty() ? EngineSession::configuredBaseUri() : options.baseUri;
    if (!options.dataFolder.isEmpty() && !DataFolder::use(options.dataFolder))
        return usageError(
            QStringLiteral("The folder \"%1\" cannot be used.").arg(options.dataFolder));
    LogLines::installShown();
    UiEngine::prepareProcess();
    MapsSession session(baseUri);
    if (!options.style.isEmpty())
        session.showStyle(options.style);
    QQmlApplicationEngine engine;
    UiEngine::prepareEngine(&engine, &session);
    if (!UiEngine::loadWindow(&engine, windowSize(options)))
        return EXIT_FAILURE;
    QMetaObject::invokeMethod(&session, &MapsSession::open, Qt::QueuedConnection);
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const UiOptions options = UiOptions::parse(argumentList(argc, argv));
    if (!options.errorString.isEmpty())
        return usageError(options.errorString);
    if (!options.output.isEmpty()) {
        std::printf("%s\n", qPrintable(options.output.trimmed()));
        return EXIT_SUCCESS;
    }
    options.applyLocale();
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("vexa-maps-ui"));
    QGuiApplication::setApplicationVersion(QStringLiteral(VEXA_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("vexa-maps-ui"));
    return options.selfTest ? SelfTest(options.pictureFolder).run() : runApp(options);
}
