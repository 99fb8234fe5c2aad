#include "ShapePainting.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <functional>

namespace kestrel {
namespace {

using Paint = std::function<void(QPainter&)>;

bool isRaster(const QPainter& painter) {
    // Null if the painter is not active, as on a window without memory for its pixels.
    const QPaintEngine* engine = painter.paintEngine();
    return engine != nullptr && engine->type() == QPaintEngine::Raster;
}

double scaleOf(const QTransform& transform) {
    return std::sqrt(std::abs(transform.determinant()));
}

/// The device pixels that a path covers when it is stroked.
QRect deviceArea(const QPainter& painter, const QPainterPath& path, const QPen& pen) {
    const double margin = pen.widthF();
    return painter.deviceTransform()
        .mapRect(path.controlPointRect().adjusted(-margin, -margin, margin, margin))
        .toAlignedRect();
}

/// Paints antialiased.
void paintDirectly(QPainter& painter, const Paint& paint) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    painter.restore();
}

/// Paints into an image of an area of device pixels in CompositionMode_Source, in which a solid
/// colour is filled on the calling thread; then paints the image.
void paintOnImage(QPainter& painter, const QRect& deviceArea, const Paint& paint) {
    const QTransform toDevice = painter.deviceTransform();
    QImage image(deviceArea.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter imagePainter(&image);
    imagePainter.setCompositionMode(QPainter::CompositionMode_Source);
    imagePainter.setTransform(toDevice *
                              QTransform::fromTranslate(-deviceArea.x(), -deviceArea.y()));
    paintDirectly(imagePainter, paint);
    imagePainter.end();

    painter.save();
    painter.setTransform(toDevice.inverted() * painter.transform());
    // With a clip region, Qt draws an image row by row: less than 96 rows stay on this thread.
    constexpr int height = 64;
    for (int top = 0; top < image.height(); top += height) {
        painter.drawImage(deviceArea.topLeft() + QPoint(0, top), image,
                          QRect(0, top, image.width(), height) & image.rect());
    }
    painter.restore();
}

void paintShape(QPainter& painter, const QRect& deviceArea, const Paint& paint) {
    // So few rows have less than 96 spans.
    constexpr int fewRows = 16;
    // An image of the drop zone, for its outline, would cost more than the threads.
    constexpr int maxPixels = 300 * 300;
    if (isRaster(painter) && deviceArea.height() > fewRows &&
        deviceArea.width() * deviceArea.height() <= maxPixels) {
        paintOnImage(painter, deviceArea, paint);
    } else {
        paintDirectly(painter, paint);
    }
}

/// Qt draws lines of up to one device pixel with QCosmeticStroker, without spans if the clip is a
/// rectangle.
void strokeThinly(QPainter& painter, const QPainterPath& path, const QPen& pen) {
    const QRect area = path.controlPointRect().toAlignedRect().adjusted(-1, -1, 1, 1);
    paintDirectly(painter, [&](QPainter& clipped) {
        clipped.setClipRect(area, Qt::IntersectClip);
        clipped.strokePath(path, pen);
    });
}

/// Fills band by band, with few spans at a time.
void fillPathInBands(QPainter& painter, const QPainterPath& path, const QBrush& brush) {
    const QTransform toDevice = painter.deviceTransform();
    const QTransform own = painter.transform();
    const QTransform onDevice = toDevice.inverted() * own;
    const QRect area = deviceArea(painter, path, Qt::NoPen);
    constexpr int height = 8;
    for (int top = area.top(); top <= area.bottom(); top += height) {
        paintDirectly(painter, [&](QPainter& clipped) {
            clipped.setTransform(onDevice);
            clipped.setClipRect(QRect(area.left(), top, area.width(), height), Qt::IntersectClip);
            clipped.setTransform(own);
            clipped.fillPath(path, brush);
        });
    }
}

} // namespace

void fillShape(QPainter& painter, const QPainterPath& path, const QBrush& brush) {
    if (isRaster(painter) && brush.style() != Qt::SolidPattern) {
        fillPathInBands(painter, path, brush);
        return;
    }
    paintShape(painter, deviceArea(painter, path, Qt::NoPen),
               [&](QPainter& other) { other.fillPath(path, brush); });
}

void strokeShape(QPainter& painter, const QPainterPath& path, const QPen& pen) {
    if (isRaster(painter) && pen.widthF() * scaleOf(painter.deviceTransform()) <= 1) {
        strokeThinly(painter, path, pen);
        return;
    }
    paintShape(painter, deviceArea(painter, path, pen),
               [&](QPainter& other) { other.strokePath(path, pen); });
}

} // namespace kestrel
