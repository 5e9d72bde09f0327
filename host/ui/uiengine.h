// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlApplicationEngine>
#include <QSize>

class MapsSession;

/** What the app's pages need around them. */
namespace UiEngine {

/** Once in a process, after the application object: style of the controls, texts, QML types. */
void prepareProcess();

/**
 * Gives the engine the app's QML module and icons and the session, which is not owned and must
 * outlive the engine, as the context property "session".
 */
void prepareEngine(QQmlEngine *engine, MapsSession *session);

/**
 * Loads the window; false if it cannot be made, which Qt has told then. Whoever knows its size says
 * it here: otherwise the window is made for a phone first.
 */
bool loadWindow(QQmlApplicationEngine *engine, QSize size = QSize());

} // namespace UiEngine
