// SPDX-License-Identifier: MIT
#ifndef VEXA_VEXA_H
#define VEXA_VEXA_H

#include "vexa_export.h"
#include <QQmlExtensionPlugin>
#include <QString>

/**
 * The QML extension plugin. An engine that imports Vexa 1.0 gets the context properties
 * "vexaBaseURI" (address of the content server, ends in "map5/"), "vexaAssetsPath" (folder of the
 * library's assets) and "log" (the logger L, unless the application has set one of its own).
 *
 * It registers no QML types: the application makes the objects and gives them to QML. Qt's plugin
 * loader makes and owns the object. Everything runs in the engine's thread.
 */
class VEXA_EXPORT VEXA : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    /** Registers the module's name, without which no engine could import it, and no type. */
    void registerTypes(const char *uri) override;

    /**
     * Prepares an engine: log level ("loglevel") and server ("vexa/vexaBaseURI") from the settings
     * of organisation "Orvel", application "Maps", which are only read; translations; the context
     * properties. Runs once an engine, before the importing document is made.
     */
    void initializeEngine(QQmlEngine *engine, const char *uri) override;

    /**
     * Loads one translation file and installs it for the life of the process. The path has no
     * extension; Qt tries ".qm" and ever shorter names. Returns false, and logs nothing, if no
     * such file loads.
     */
    bool installTranslator(const QString &path);

    /**
     * Installs the first translation that there is for the system's locale, else for British
     * English. Looks below "i18n/" in the directory, which must end in "/", for files whose name
     * begins with the prefix. Logs one warning if there is none.
     */
    void installTranslators(const QString &directory, const QString &prefix);

    /** The content server for applications whose settings name none; chosen at build time. */
    static QString defaultBaseUri();
};

#endif
