// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickImageProvider>

/**
 * The app's own icons in any colour and size: "image://icons/NAME/RRGGBB" is icons/NAME.svg of the
 * resources, drawn in that colour where the file says "currentColor".
 *
 * The engine that it is added to owns it. Pictures are asked for in the engine's reading threads.
 */
class IconProvider : public QQuickImageProvider
{
public:
    /** Side of an icon for which QML names no sourceSize, in pixels. */
    static constexpr int DefaultSide = 24;

    IconProvider();

    /** A null picture, which QML warns of, if there is no such icon or colour. */
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
