// SPDX-License-Identifier: MIT
/* The least that a program with a window of Qt Quick does; startbench compares the app with it. */
#include <cstdlib>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace {

const char Window[] = R"(
import QtQuick 2.15
import QtQuick.Window 2.15

Window {
    visible: true
    width: 1100
    height: 760
    Text {
        anchors.centerIn: parent
        text: "Hello"
    }
}
)";

} // namespace

int main(int count, char *words[])
{
    const QGuiApplication application(count, words);
    QQmlApplicationEngine engine;
    engine.loadData(Window);
    if (engine.rootObjects().isEmpty())
        return EXIT_FAILURE;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    QObject::connect(window, &QQuickWindow::frameSwapped, [] { std::_Exit(EXIT_SUCCESS); });
    return QGuiApplication::exec();
}
