// SPDX-License-Identifier: MIT
#include "host/ui/uiengine.h"

#include "host/shared/hosttypes.h"
#include "host/ui/iconprovider.h"
#include "host/ui/mapssession.h"
#include "plugin/logger.h"
#include "plugin/qtcompat.h"
#include "plugin/vexa.h"
#include <QGuiApplication>
#include <QIcon>
#include <QLocale>
#include <QQmlContext>
#include <QQuickStyle>
#include <QSettings>
#include <QUrl>

namespace {

void applyLogLevel()
{
    const QSettings settings(QStringLiteral("Orvel"), QStringLiteral("Maps"));
    if (settings.contains(QStringLiteral("loglevel")))
        L::og()->setLogLevel(settings.value(QStringLiteral("loglevel")).toInt());
}

} // namespace

void UiEngine::prepareProcess()
{
    applyLogLevel();
    // The pages draw their controls themselves, on top of the style that adds least.
    QQuickStyle::setStyle(QLatin1String(VexaCompat::PlainControlsStyle));
    VEXA().installTranslators(QStringLiteral(":/vexa/"), QStringLiteral("vexa"));
    QGuiApplication::setLayoutDirection(QLocale::system().textDirection());
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/vexa-maps-ui.svg")));
    registerHostTypes("VexaHost");
}

void UiEngine::prepareEngine(QQmlEngine *engine, MapsSession *session)
{
    engine->addImportPath(QStringLiteral("qrc:/qml"));
    engine->addImageProvider(QStringLiteral("icons"), new IconProvider); // the engine's
    engine->rootContext()->setContextProperty(QStringLiteral("session"), session);
    engine->rootContext()->setContextProperty(QStringLiteral("log"), L::og());
}

bool UiEngine::loadWindow(QQmlApplicationEngine *engine, QSize size)
{
    if (size.isValid())
        engine->setInitialProperties(
            {{QStringLiteral("width"), size.width()}, {QStringLiteral("height"), size.height()}});
    engine->load(QUrl(QStringLiteral("qrc:/qml/VexaMaps/Main.qml")));
    return !engine->rootObjects().isEmpty();
}
