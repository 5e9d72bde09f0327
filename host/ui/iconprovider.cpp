// SPDX-License-Identifier: MIT
#include "host/ui/iconprovider.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

IconProvider::IconProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{ }

QImage IconProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QString name = id.section(QLatin1Char('/'), 0, 0);
    const QColor color(QLatin1Char('#') + id.section(QLatin1Char('/'), 1));
    QFile file(QLatin1String(":/icons/") + name + QLatin1String(".svg"));
    if (!color.isValid() || !file.open(QIODevice::ReadOnly))
        return QImage();
    QSvgRenderer renderer(
        file.readAll().replace(QByteArrayLiteral("currentColor"), color.name().toLatin1()));
    if (!renderer.isValid())
        return QImage();
    QImage image(requestedSize.isEmpty() ? QSize(DefaultSide, DefaultSide) : requestedSize,
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    *size = image.size();
    return image;
}
