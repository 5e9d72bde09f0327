// SPDX-License-Identifier: MIT
#pragma once

#include "catalog/mapcatalog.h"

#include <memory>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

/**
 * The application of a program that shows such a list for `--work show` and nothing else: only that
 * needs more than the event loop, which is part of what is timed. Keeps both references.
 */
inline std::unique_ptr<QCoreApplication> makeApplication(int &count, char **words)
{
    if (count > 2 && qstrcmp(words[2], "show") == 0) {
        // Where there is no screen, Qt 5 has no OpenGL either.
        QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
        return std::make_unique<QGuiApplication>(count, words);
    }
    return std::make_unique<QCoreApplication>(count, words);
}

/** A window with a list of the catalogue's regions, bound to what an app shows of them. */
class RegionList
{
public:
    explicit RegionList(MapCatalog *catalog)
    {
        m_engine.rootContext()->setContextProperty(QStringLiteral("catalog"), catalog);
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick 2.15\n"
                          "ListView {\n"
                          "    property int installed: catalog.installedRegions.length\n"
                          "    property bool busy: catalog.bussy\n"
                          "    width: 480; height: 800\n"
                          "    header: Text { text: catalog.installedMapsVersion }\n"
                          "    model: catalog.availableRegions\n"
                          "    delegate: Text {\n"
                          "        text: (modelData.localizedName || modelData.name)\n"
                          "            + modelData.downloadSize + modelData.installed\n"
                          "            + modelData.fileList.length + modelData.children.length\n"
                          "    }\n"
                          "}\n",
                          QUrl());
        m_list.reset(qobject_cast<QQuickItem *>(component.create()));
        if (!m_list)
            qFatal("%s", qPrintable(component.errorString()));
        m_list->setParentItem(m_window.contentItem());
        m_window.resize(480, 800);
        m_window.show();
        QCoreApplication::processEvents();
    }

    /** How many regions QML sees. */
    int count() const { return m_list->property("count").toInt(); }

private:
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QQuickItem> m_list;
};
