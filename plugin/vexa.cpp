// SPDX-License-Identifier: MIT
#include "plugin/vexa.h"

#include "plugin/logger.h"
#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <qqml.h>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSettings>
#include <QStringList>
#include <QTranslator>
#include <QVariant>

namespace {

const char AssetsPath[] = "/usr/share/vexa/";

// A variant that holds a null string is null on Qt 5 only.
bool isUnset(const QVariant &value)
{
    return value.isNull()
        || (value.userType() == QMetaType::QString && value.toString().isNull());
}

} // namespace

// Asked for by the plugin loaders of Qt 4; this is what they compare with their own build key.
extern "C" Q_DECL_EXPORT const char *qt_plugin_query_verification_data()
{
    return "pattern=QT_PLUGIN_VERIFICATION_DATA\nversion=4.7.4\ndebug=false\n"
           "buildkey=armv6 linux g++-4 full-config";
}

void VEXA::registerTypes(const char *uri)
{
    qmlRegisterModule(uri, 1, 0);
}

void VEXA::initializeEngine(QQmlEngine *engine, const char *uri)
{
    Q_UNUSED(uri);
    const QSettings settings(QStringLiteral("Orvel"), QStringLiteral("Maps"));
    if (settings.contains(QStringLiteral("loglevel")))
        L::og()->setLogLevel(settings.value(QStringLiteral("loglevel")).toInt());
    L::og()->trace(QStringLiteral("VEXA plugin startup."));

    installTranslators(QLatin1String(AssetsPath), QStringLiteral("vexa"));

    QQmlContext *context = engine->rootContext();
    context->setContextProperty(QStringLiteral("vexaBaseURI"),
                                settings.value(QStringLiteral("vexa/vexaBaseURI"),
                                               defaultBaseUri()));
    context->setContextProperty(QStringLiteral("vexaAssetsPath"),
                                QVariant(QLatin1String(AssetsPath)));
    if (isUnset(context->contextProperty(QStringLiteral("log"))))
        context->setContextProperty(QStringLiteral("log"), L::og());
    L::og()->trace(QStringLiteral("VEXA plugin startup finished"));
}

bool VEXA::installTranslator(const QString &path)
{
    const QString nativePath = QDir::toNativeSeparators(path);
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(nativePath))
        return false;
    L::og()->trace(QLatin1String("Loaded translation from ") + nativePath);
    // Not owned by anyone: a translation stays for the life of the process.
    return QCoreApplication::installTranslator(translator.release());
}

void VEXA::installTranslators(const QString &directory, const QString &prefix)
{
    const QString locale = QLocale::system().name();
    const QString language = locale.split(QLatin1Char('_')).constFirst();
    const QString name = directory + QLatin1String("i18n/") + prefix + QLatin1Char('_');
    const QStringList candidates {
        name + locale,
        name + language + QLatin1Char('_') + language.toUpper(),
        name + language,
        name + language, // the same once more: the sequence of tries is fixed
        name + QLatin1String("en_GB"),
        name + QLatin1String("en_DEV"),
    };
    for (const QString &candidate : candidates) {
        if (installTranslator(candidate))
            return;
    }
    L::og()->warning(QLatin1String("Warning: no translation file found for ") + prefix);
}

QString VEXA::defaultBaseUri()
{
    return QStringLiteral(VEXA_DEFAULT_BASE_URI);
}
