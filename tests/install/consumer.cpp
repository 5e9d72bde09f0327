// SPDX-License-Identifier: MIT
// Uses the installed library as a host does: linked, and imported by its QML pages.
#include <cstdio>
#include <memory>
#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <vexa/dataroot.h>
#include <vexa/logger.h>
#include <vexa/vexa.h>
#include <vexa/vexaconstants.h>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QQmlEngine engine;
    if (argc > 1)
        engine.addImportPath(QString::fromLocal8Bit(argv[1]));
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.0\nimport Vexa 1.0\n"
                      "QtObject { property var logger: log; property string uri: vexaBaseURI }",
                      QUrl());
    const std::unique_ptr<QObject> page(component.create());
    if (!page) {
        fprintf(stderr, "%s\n", qPrintable(component.errorString()));
        return 1;
    }
    if (page->property("logger").value<QObject *>() != L::og()) {
        fprintf(stderr, "the module is a second copy of the linked library\n");
        return 1;
    }
    if (page->property("uri").toString() != VEXA::defaultBaseUri())
        return 1;
    printf("%s %s\n", qPrintable(VEXA_SETTINGS_FILE_NAME), qPrintable(DataRoot::cities()));
    return 0;
}
