#include "VectorImage.h"

#include "FatalError.h"

#include <QPicture>
#include <QResource>

#include <cstddef>
#include <cstring>
#include <span>

namespace kestrel {
namespace {

QString pathOf(const QString& name, QStringView suffix) {
    return QStringLiteral(":/images/%1.%2").arg(name, suffix);
}

} // namespace

QImage prerenderedImage(const QString& name, Rendering rendering, int side) {
    const QResource resource(pathOf(name, rendering == Rendering::mask ? u"mask" : u"pixels"));
    std::span rest(resource.data(), static_cast<std::size_t>(resource.size()));
    QImage image(side, side, formatOf(rendering));
    const auto lineLength = static_cast<std::size_t>(side * image.depth() / 8);
    // Of each size: its side, in one byte, and its lines.
    while (!rest.empty()) {
        const int otherSide = rest.front();
        rest = rest.subspan(1);
        if (otherSide == side) {
            for (int y = 0; y < side; ++y) {
                std::memcpy(image.scanLine(y), rest.data(), lineLength);
                rest = rest.subspan(lineLength);
            }
            return image;
        }
        rest = rest.subspan(static_cast<std::size_t>(otherSide * otherSide * image.depth() / 8));
    }
    return {};
}

QImage vectorImage(const QString& name, Rendering rendering, int side) {
    QImage image = prerenderedImage(name, rendering, side);
    if (!image.isNull()) {
        return image;
    }
    QPicture picture;
    if (!picture.load(pathOf(name, u"pic"))) {
        fatalError("a vector image is missing");
    }
    return renderPicture(picture, rendering, side);
}

} // namespace kestrel
