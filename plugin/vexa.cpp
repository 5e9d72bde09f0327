// SPDX-License-Identifier: MIT
#include "plugin/vexa.h"

#include "plugin/logger.h"
#include <memory>
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
#include <vector>

namespace {

const char AssetsPath[] = "/usr/share/vexa/";

// A variant that holds a null string is null on Qt 5 only.
bool isUnset(const QVariant &value)
{
    return value.isNull() || (value.userType() == QMetaType::QString && value.toString().isNull());
}

// Owns the translations for the life of the process. Never destroyed, because the application
// object still asks them when it is a static that goes later.
void keep(std::unique_ptr<QTranslator> translator)
{
    static auto *const kept = new std::vector<std::unique_ptr<QTranslator>>;
    kept->push_back(std::move(translator));
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
    const QVariant baseUri = settings.value(QStringLiteral("vexa/vexaBaseURI"), defaultBaseUri());
    // A comma that was written by hand without quotes makes QSettings give a list.
    context->setContextProperty(QStringLiteral("vexaBaseURI"),
                                baseUri.toStringList().join(QLatin1Char(',')));
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
    // The answer is no for a file without texts, although that is installed too.
    QCoreApplication::installTranslator(translator.get());
    keep(std::move(translator));
    return true;
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
