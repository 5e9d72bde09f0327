// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QStringList>

/** Looks for what a finished page must not have. GUI thread. */
namespace PageInspector {

/** The least side of what a finger presses, in pixels. */
inline constexpr int TouchSide = 44;

/**
 * What is wrong with what the window shows, a line each: text that is cut off or leaves the
 * window, a control without a spoken name, one that is too small to be touched. Rows that are
 * scrolled away are not looked at.
 */
QStringList faults(QQuickWindow *window);

/** The items below this one, itself included, that are shown; painted last comes last. */
QList<QQuickItem *> shownItems(QQuickItem *item);

/** The first shown item whose objectName this is, or null. */
QQuickItem *find(QQuickWindow *window, const QString &objectName);
/** The first shown control whose spoken name this is, or null. */
QQuickItem *findNamed(QQuickWindow *window, const QString &name);

} // namespace PageInspector
