// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QStringList>
#include <QTemporaryDir>

class MapsSession;

/**
 * Shows every page and dialog, narrow and wide, light and dark, with made-up data and without a
 * network, and looks for warnings, cut texts, controls without a name and controls too small to
 * touch. Touches nothing but a temporary folder.
 */
class SelfTest
{
public:
    /** Keeps a picture of every view in the folder, unless that is empty. */
    explicit SelfTest(const QString &pictureFolder = QString());
    ~SelfTest();
    Q_DISABLE_COPY(SelfTest)

    /** The program's exit code; what is wrong is on the standard error output. */
    int run();

private:
    bool prepare();
    void walk(QSize size, const QString &style);
    void walkRegions();
    void walkOthers();
    void walkUpdate();
    void look(const QString &what);
    void call(QObject *object, const char *function, const QVariant &argument = QVariant());
    void closeDialogs();
    QObject *object(const char *name) const;

    const QString m_pictureFolder;
    QTemporaryDir m_folder;
    std::unique_ptr<MapsSession> m_session;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr; // the engine's
    QString m_where; // size and style, for the messages
    int m_views = 0;
    QStringList m_faults;
};
