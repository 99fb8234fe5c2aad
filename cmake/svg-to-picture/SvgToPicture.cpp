// Usage: svg-to-picture SVG PICTURE RENDERED pixels|mask SIDE...
// Records the painting of an SVG file as a QPicture, in the SVG's units. The picture's bounding
// rectangle has the SVG's default size. Renders it in these sizes, of 255 pixels at most, into one
// file: for each size its side, in one byte, and its lines from top to bottom.
#include "PictureRendering.h"

#include <QCoreApplication>
#include <QFile>
#include <QPainter>
#include <QPicture>
#include <QStringList>
#include <QSvgRenderer>

#include <cstdio>

namespace {

bool render(QPicture& picture, const QString& path, kestrel::Rendering rendering,
            const QStringList& sides) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    for (const QString& text : sides) {
        bool isByte = false;
        const int side = text.toUShort(&isByte);
        if (!isByte || side == 0 || side > 255) {
            return false;
        }
        const QImage image = kestrel::renderPicture(picture, rendering, side);
        file.putChar(static_cast<char>(side));
        for (int y = 0; y < image.height(); ++y) {
            // Without the padding of QImage's lines.
            file.write(reinterpret_cast<const char*>(image.scanLine(y)), // NOLINT: bytes
                       image.width() * image.depth() / 8);
        }
    }
    return file.flush();
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const bool isMask = arguments.value(4) == QStringLiteral("mask");
    if (!isMask && arguments.value(4) != QStringLiteral("pixels")) {
        static_cast<void>(
            std::fputs("usage: svg-to-picture SVG PICTURE RENDERED pixels|mask SIDE...\n", stderr));
        return 2;
    }
    QSvgRenderer renderer(arguments.at(1));
    const QRect box(QPoint(0, 0), renderer.defaultSize());
    QPicture picture;
    picture.setBoundingRect(box);
    QPainter painter(&picture);
    renderer.render(&painter, box);
    painter.end();
    const auto rendering = isMask ? kestrel::Rendering::mask : kestrel::Rendering::pixels;
    const bool isWritten = picture.save(arguments.at(2)) &&
                           render(picture, arguments.at(3), rendering, arguments.sliced(5));
    return renderer.isValid() && isWritten ? 0 : 1;
}
