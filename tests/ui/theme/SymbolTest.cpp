#include "Symbol.h"

#include "Scenario.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace kestrel {
namespace {

const std::vector<Symbol> allSymbols = {
    Symbol::arrowDownDocFill,  Symbol::arrowRightCircle,
    Symbol::boltFill,          Symbol::checkmarkCircleFill,
    Symbol::folderBadgePlus,   Symbol::folderFill,
    Symbol::musicNote,         Symbol::plus,
    Symbol::waveform,          Symbol::waveformBadgeMagnifyingglass,
    Symbol::waveformBadgePlus, Symbol::xmarkCircleFill,
};

QImage draw(Symbol symbol, int size, const QColor& color, double ratio = 1) {
    return symbolPixmap(symbol, size, color, ratio)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

/// The mean alpha, from 0 to 1.
double coverage(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            sum += image.pixelColor(x, y).alphaF();
        }
    }
    return sum / (image.width() * image.height());
}

TEST(SymbolTest, isDrawnInTheGivenColourOnly) {
    for (const Symbol symbol : allSymbols) {
        const QImage image = draw(symbol, 24, QColor(10, 200, 30));
        const double covered = coverage(image);
        EXPECT_GT(covered, 0.04) << utf8(symbolName(symbol));
        EXPECT_LT(covered, 0.85) << utf8(symbolName(symbol));
        for (int y = 0; y < 24; ++y) {
            for (int x = 0; x < 24; ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.alpha() == 255) {
                    ASSERT_EQ(pixel.rgb(), qRgb(10, 200, 30)) << utf8(symbolName(symbol));
                }
            }
        }
    }
}

TEST(SymbolTest, centresTheBarsOfTheWaveform) {
    const QImage image = draw(Symbol::waveform, 96, Qt::black);
    int first = image.width();
    int last = -1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > 127) {
                first = std::min(first, x);
                last = std::max(last, x);
            }
        }
    }
    EXPECT_EQ(first, image.width() - 1 - last);
}

TEST(SymbolTest, takesTheOpacityOfItsColour) {
    const QImage image = draw(Symbol::folderFill, 24, QColor(0, 0, 0, 100));
    EXPECT_EQ(image.pixelColor(12, 14).alpha(), 100);
}

TEST(SymbolTest, isRenderedForEachDevicePixelRatio) {
    for (const Symbol symbol : allSymbols) {
        for (const double ratio : {1.0, 1.5, 2.0}) {
            const QPixmap pixmap = symbolPixmap(symbol, 20, Qt::black, ratio);
            EXPECT_EQ(pixmap.width(), static_cast<int>(20 * ratio));
            EXPECT_EQ(pixmap.devicePixelRatio(), ratio);
        }
        // A scaled-up pixmap would consist of blocks of four equal pixels.
        const QImage large = draw(symbol, 20, Qt::black, 2);
        const QImage enlarged = draw(symbol, 20, Qt::black).scaled(40, 40);
        EXPECT_NE(large, enlarged) << utf8(symbolName(symbol));
    }
}

TEST(SymbolTest, isNamedAfterItsFile) {
    const std::vector<std::string> names = {
        "arrow.down.doc.fill",
        "arrow.right.circle",
        "bolt.fill",
        "checkmark.circle.fill",
        "folder.badge.plus",
        "folder.fill",
        "music.note",
        "plus",
        "waveform",
        "waveform.badge.magnifyingglass",
        "waveform.badge.plus",
        "xmark.circle.fill",
    };
    for (std::size_t index = 0; index < names.size(); ++index) {
        EXPECT_EQ(utf8(symbolName(allSymbols[index])), names[index]);
    }
}

TEST(SymbolTest, hasTwelveDistinctImages) {
    std::set<std::vector<uchar>> images;
    for (const Symbol symbol : allSymbols) {
        const QImage image = draw(symbol, 24, Qt::black);
        images.emplace(image.constBits(), image.constBits() + image.sizeInBytes());
    }
    EXPECT_EQ(images.size(), 12U);
}

TEST(SymbolTest, cutsTheCrossOutOfItsDisc) {
    const QImage image = draw(Symbol::xmarkCircleFill, 24, Qt::black);
    EXPECT_EQ(image.pixelColor(12, 12).alpha(), 0);
    EXPECT_EQ(image.pixelColor(12, 5).alpha(), 255);
}

TEST(SymbolTest, isAsLargeAsItsFont) {
    QFont font;
    font.setPixelSize(20);
    EXPECT_EQ(symbolSize(font), 25);
}

TEST(SymbolTest, isAlignedToDevicePixels) {
    QImage canvas(30, 30, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    drawSymbol(painter, QRectF(3.5, 2.5, 24, 24), Symbol::plus, 24, Qt::black);
    painter.end();
    const QImage expected = draw(Symbol::plus, 24, Qt::black);
    EXPECT_EQ(canvas.copy(4, 3, 24, 24).convertToFormat(QImage::Format_ARGB32), expected);
}

TEST(SymbolTest, isRenderedOnceForEachColorSizeAndRatio) {
    const auto key = [](Symbol symbol, int size, const QColor& color, double ratio) {
        return symbolPixmap(symbol, size, color, ratio).cacheKey();
    };
    const qint64 first = key(Symbol::plus, 20, Qt::black, 1);
    EXPECT_EQ(key(Symbol::plus, 20, Qt::black, 1), first);
    EXPECT_NE(key(Symbol::waveform, 20, Qt::black, 1), first);
    EXPECT_NE(key(Symbol::plus, 21, Qt::black, 1), first);
    EXPECT_NE(key(Symbol::plus, 20, Qt::white, 1), first);
    EXPECT_NE(key(Symbol::plus, 10, Qt::black, 2), first);
}

} // namespace
} // namespace kestrel
