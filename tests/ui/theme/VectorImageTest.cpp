#include "VectorImage.h"

#include "PaintedFromFile.h"
#include "Scenario.h"

#include <QDir>
#include <QFileInfo>
#include <QPicture>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

QStringList symbolNames() {
    QStringList names;
    for (const QFileInfo& file : QDir(QStringLiteral(SYMBOLS)).entryInfoList(QDir::Files)) {
        names += file.completeBaseName();
    }
    return names;
}

QImage pixels(const QString& name, int side) {
    return vectorImage(name, Rendering::pixels, side)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// As the program renders it for a size that was not rendered at build time.
QImage renderedNow(const QString& name, Rendering rendering, int side) {
    QPicture picture;
    EXPECT_TRUE(picture.load(QStringLiteral(":/images/%1.pic").arg(name)));
    return renderPicture(picture, rendering, side);
}

TEST(VectorImageTest, matchesQSvgRenderer) {
    const QStringList names = symbolNames();
    ASSERT_EQ(names.size(), 12);
    for (const QString& name : names) {
        const QString path = QStringLiteral(SYMBOLS "/%1.svg").arg(name);
        for (const int side : {10, 13, 16, 24, 33, 128, 511}) {
            const QImage image = pixels(name, side);
            EXPECT_NE(image, blankImage(side)) << utf8(name) << ' ' << side;
            EXPECT_EQ(image, paintedFromFile(path, side)) << utf8(name) << ' ' << side;
        }
    }
}

TEST(VectorImageTest, isTheSameRenderedAtBuildTimeAndNow) {
    for (const QString& name : symbolNames()) {
        for (int side = 11; side <= 44; ++side) {
            EXPECT_EQ(prerenderedImage(name, Rendering::mask, side),
                      renderedNow(name, Rendering::mask, side))
                << utf8(name) << ' ' << side;
        }
        EXPECT_TRUE(prerenderedImage(name, Rendering::mask, 45).isNull());
        EXPECT_EQ(vectorImage(name, Rendering::mask, 45), renderedNow(name, Rendering::mask, 45));
        EXPECT_TRUE(prerenderedImage(name, Rendering::pixels, 16).isNull());
    }
}

TEST(VectorImageTest, cutsWhiteOutOfTheMask) {
    const QString cross = QStringLiteral("xmark.circle.fill");
    const QImage mask = vectorImage(cross, Rendering::mask, 24);
    EXPECT_EQ(mask.format(), QImage::Format_Alpha8);
    EXPECT_EQ(pixels(cross, 24).pixelColor(12, 12), Qt::white);
    EXPECT_EQ(mask.pixelColor(12, 12).alpha(), 0);
    EXPECT_EQ(pixels(cross, 24).pixelColor(12, 5), Qt::black);
    EXPECT_EQ(mask.pixelColor(12, 5).alpha(), 255);
}

TEST(VectorImageDeathTest, terminatesOnAMissingImage) {
    // Qt runs threads, which a forked child does not have.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(vectorImage(QStringLiteral("no.such"), Rendering::mask, 24),
                 "Fatal error: a vector image is missing");
}

} // namespace
} // namespace kestrel
