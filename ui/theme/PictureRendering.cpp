#include "PictureRendering.h"

#include <QPainter>
#include <QPicture>

#include <utility>

namespace kestrel {
namespace {

QImage maskOf(const QImage& image) {
    QImage mask(image.size(), formatOf(Rendering::mask));
    for (int y = 0; y < image.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(image.scanLine(y)); // NOLINT: the format
        uchar* to = mask.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            to[x] = static_cast<uchar>(qAlpha(from[x]) - qRed(from[x]));
        }
    }
    return mask;
}

} // namespace

QImage::Format formatOf(Rendering rendering) {
    // Both are the same in every byte order.
    return rendering == Rendering::mask ? QImage::Format_Alpha8
                                        : QImage::Format_RGBA8888_Premultiplied;
}

QImage renderPicture(QPicture& picture, Rendering rendering, int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const double scale = static_cast<double>(side) / picture.boundingRect().width();
    painter.scale(scale, scale);
    picture.play(&painter);
    painter.end();
    return rendering == Rendering::mask
               ? maskOf(image)
               : std::move(image).convertToFormat(formatOf(Rendering::pixels));
}

} // namespace kestrel
