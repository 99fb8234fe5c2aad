#include "TextFont.h"

#include "FontConfiguration.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace kestrel {
namespace {

constexpr int minPixelSize = 9;
/// The body size that the other sizes are relative to.
constexpr double bodySize = 13;

double sizeOf(TextStyle style) {
    switch (style) {
    case TextStyle::title2:
        return 17;
    case TextStyle::title3:
        return 15;
    case TextStyle::subheadline:
        return 11;
    case TextStyle::caption:
    case TextStyle::caption2:
        return 10;
    case TextStyle::body:
        break;
    }
    return bodySize;
}

double pixelsPerPoint() {
    constexpr double pointsPerInch = 72;
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->logicalDotsPerInchY() / pointsPerInch : 96 / pointsPerInch;
}

/// Gives the font the family of another one. For a family that is not installed, such as a generic
/// one, Qt 6.4 to 6.11 look up all fallback fonts, each of them among all families.
void useInstalledFamily(QFont& font, const QFont& other) {
    font.setFamilies({installedFontFamily(other.family())});
}

void scale(QFont& font, double ratio) {
    if (font.pixelSize() > 0) {
        const auto pixels = static_cast<int>(std::lround(font.pixelSize() * ratio));
        font.setPixelSize(std::max(pixels, minPixelSize));
    } else {
        font.setPointSizeF(std::max(font.pointSizeF() * ratio, minPixelSize / pixelsPerPoint()));
    }
}

} // namespace

QFont TextFont::font() const {
    QFont font = QGuiApplication::font();
    if (isMonospaced) {
        useInstalledFamily(font, QFontDatabase::systemFont(QFontDatabase::FixedFont));
        font.setStyleHint(QFont::Monospace);
    } else {
        useInstalledFamily(font, font);
    }
    font.setWeight(weight);
    scale(font, sizeOf(style) / bodySize);
    return font;
}

int pixelSize(const QFont& font) {
    if (font.pixelSize() > 0) {
        return font.pixelSize();
    }
    return static_cast<int>(std::lround(font.pointSizeF() * pixelsPerPoint()));
}

int lineHeight(const QFont& font) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).height()));
}

QFont systemFont(int pixelSize, QFont::Weight weight) {
    QFont font = QGuiApplication::font();
    useInstalledFamily(font, font);
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

} // namespace kestrel
