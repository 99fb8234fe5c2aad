#include "Symbol.h"

#include "TextFont.h"
#include "VectorImage.h"

#include <QImage>
#include <QPainter>
#include <QPixmapCache>

#include <cmath>
#include <utility>

namespace kestrel {
namespace {

/// Includes the SVG images' margin; makes symbols as high as capitals with descenders.
constexpr double sizePerFontSize = 1.25;

} // namespace

QString symbolName(Symbol symbol) {
    switch (symbol) {
    case Symbol::arrowDownDocFill:
        return QStringLiteral("arrow.down.doc.fill");
    case Symbol::arrowRightCircle:
        return QStringLiteral("arrow.right.circle");
    case Symbol::boltFill:
        return QStringLiteral("bolt.fill");
    case Symbol::checkmarkCircleFill:
        return QStringLiteral("checkmark.circle.fill");
    case Symbol::folderBadgePlus:
        return QStringLiteral("folder.badge.plus");
    case Symbol::folderFill:
        return QStringLiteral("folder.fill");
    case Symbol::musicNote:
        return QStringLiteral("music.note");
    case Symbol::plus:
        return QStringLiteral("plus");
    case Symbol::waveform:
        return QStringLiteral("waveform");
    case Symbol::waveformBadgeMagnifyingglass:
        return QStringLiteral("waveform.badge.magnifyingglass");
    case Symbol::waveformBadgePlus:
        return QStringLiteral("waveform.badge.plus");
    case Symbol::xmarkCircleFill:
        break;
    }
    return QStringLiteral("xmark.circle.fill");
}

int symbolSize(const QFont& font) {
    return static_cast<int>(std::lround(pixelSize(font) * sizePerFontSize));
}

QPixmap symbolPixmap(Symbol symbol, int size, const QColor& color, double devicePixelRatio) {
    const auto pixels = static_cast<int>(std::lround(size * devicePixelRatio));
    const QString key =
        QStringLiteral("kestrel/%1/%2/%3/%4")
            .arg(QString::number(static_cast<int>(symbol)), QString::number(pixels),
                 QString::number(devicePixelRatio), QString::number(color.rgba(), 16));
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap;
    }
    QImage image = vectorImage(symbolName(symbol), Rendering::mask, pixels)
                       .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    pixmap = QPixmap::fromImage(std::move(image));
    pixmap.setDevicePixelRatio(devicePixelRatio);
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

void drawSymbol(QPainter& painter, const QRectF& box, Symbol symbol, int size,
                const QColor& color) {
    const QPixmap pixmap = symbolPixmap(symbol, size, color, painter.device()->devicePixelRatioF());
    // Off the device pixel grid the symbol would blur.
    const QTransform toDevice = painter.deviceTransform();
    const QPointF corner = box.center() - QPointF(size, size) / 2;
    const QPointF aligned = toDevice.inverted().map(QPointF(toDevice.map(corner).toPoint()));
    painter.drawPixmap(aligned, pixmap);
}

} // namespace kestrel
