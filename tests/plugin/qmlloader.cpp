// SPDX-License-Identifier: MIT
// A program that knows the library only as a QML module: imports it from the folder that is its
// argument, if there is one, else from where Qt looks.
#include <cstdio>
#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QQmlEngine engine;
    if (argc > 1)
        engine.addImportPath(QString::fromLocal8Bit(argv[1]));
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.0\nimport Vexa 1.0\nQtObject { property string uri: "
                      "vexaBaseURI\n Component.onCompleted: log.error('said by a page', "
                      "'Page.qml') }",
                      QUrl());
    QObject *object = component.create();
    if (!object) {
        fprintf(stderr, "%s\n", qPrintable(component.errorString()));
        return 1;
    }
    printf("uri %s\n", qPrintable(object->property("uri").toString()));
    delete object;
    return 0;
}
