// SPDX-License-Identifier: MIT
#include "host/ui/pageinspector.h"

#include <QAccessible>
#include <QAccessibleInterface>

namespace {

constexpr qreal Slack = 1.0; // pixels; letters are placed between them

bool isControl(const QQuickItem *item)
{
    return item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextField");
}

QString spokenName(QQuickItem *item)
{
    QAccessibleInterface *const face = QAccessible::queryAccessibleInterface(item);
    return face ? face->text(QAccessible::Name) : QString();
}

// Where it can be seen: what its clipping ancestors leave of it, in the window's coordinates.
QRectF seenPart(const QQuickItem *item)
{
    QRectF seen = item->mapRectToScene(item->boundingRect());
    for (const QQuickItem *parent = item->parentItem(); parent; parent = parent->parentItem()) {
        if (parent->clip())
            seen &= parent->mapRectToScene(QRectF(0, 0, parent->width(), parent->height()));
    }
    return seen;
}

bool isScrolledAway(const QQuickItem *item)
{
    const QRectF whole = item->mapRectToScene(item->boundingRect());
    return !seenPart(item).adjusted(-Slack, -Slack, Slack, Slack).contains(whole);
}

QString described(const QQuickItem *item)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(QLatin1String(item->metaObject()->className()), item->property("text").toString());
}

QString textFault(const QQuickItem *item, const QRectF &window)
{
    if (!item->inherits("QQuickText") || item->property("text").toString().isEmpty())
        return QString();
    if (item->property("truncated").toBool())
        return described(item) + QLatin1String(" is cut off");
    const qreal excess = item->property("contentWidth").toReal() - item->width();
    if (excess > Slack)
        return described(item) + QStringLiteral(" is %1 pixels too wide").arg(excess);
    const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    if (place.left() < window.left() - Slack || place.right() > window.right() + Slack)
        return described(item) + QLatin1String(" leaves the window");
    return QString();
}

QString controlFault(QQuickItem *item)
{
    if (!isControl(item))
        return QString();
    if (spokenName(item).isEmpty())
        return described(item) + QLatin1String(" has no spoken name");
    const bool pressed = item->isEnabled() && item->property("hoverEnabled").toBool();
    if (pressed
        && (item->width() < PageInspector::TouchSide || item->height() < PageInspector::TouchSide))
        return described(item)
            + QStringLiteral(" is only %1 x %2 pixels").arg(item->width()).arg(item->height());
    return QString();
}

void addShown(QQuickItem *item, QList<QQuickItem *> *items)
{
    if (!item->isVisible() || item->opacity() == 0.0)
        return;
    items->append(item);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        addShown(child, items);
}

} // namespace

QList<QQuickItem *> PageInspector::shownItems(QQuickItem *item)
{
    QList<QQuickItem *> items;
    addShown(item, &items);
    return items;
}

QStringList PageInspector::faults(QQuickWindow *window)
{
    QStringList faults;
    const QRectF area(0, 0, window->width(), window->height());
    const QList<QQuickItem *> items = shownItems(window->contentItem());
    for (QQuickItem *item : items) {
        if (isScrolledAway(item))
            continue;
        for (const QString &fault : {textFault(item, area), controlFault(item)}) {
            if (!fault.isEmpty())
                faults.append(fault);
        }
    }
    return faults;
}

QQuickItem *PageInspector::find(QQuickWindow *window, const QString &objectName)
{
    const QList<QQuickItem *> items = shownItems(window->contentItem());
    for (QQuickItem *item : items) {
        if (item->objectName() == objectName)
            return item;
    }
    return nullptr;
}

QQuickItem *PageInspector::findNamed(QQuickWindow *window, const QString &name)
{
    const QList<QQuickItem *> items = shownItems(window->contentItem());
    for (QQuickItem *item : items) {
        if ((isControl(item) || item->inherits("QQuickItemDelegate")) && spokenName(item) == name)
            return item;
    }
    return nullptr;
}
