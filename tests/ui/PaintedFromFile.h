#pragma once

#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

namespace kestrel {

/// A transparent square.
inline QImage blankImage(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The SVG file as rendered by QSvgRenderer; blank if it cannot be read.
inline QImage paintedFromFile(const QString& file, int size) {
    QImage image = blankImage(size);
    QSvgRenderer renderer(file);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(0, 0, size, size));
    return image;
}

} // namespace kestrel
