#include "VectorImage.h"

#include "PaintedFromFile.h"
#include "Scenario.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

QImage painted(const QString& name, int size) {
    QImage image = blankImage(size);
    QPainter painter(&image);
    paintVectorImage(painter, name, size);
    return image;
}

TEST(VectorImageTest, matchesQSvgRenderer) {
    const QFileInfoList files = QDir(QStringLiteral(SYMBOLS)).entryInfoList(QDir::Files);
    ASSERT_EQ(files.size(), 12);
    for (const QFileInfo& file : files) {
        for (const int size : {10, 13, 16, 24, 33, 128, 511}) {
            const QImage image = painted(file.completeBaseName(), size);
            EXPECT_NE(image, blankImage(size)) << utf8(file.fileName()) << ' ' << size;
            EXPECT_EQ(image, paintedFromFile(file.filePath(), size))
                << utf8(file.fileName()) << ' ' << size;
        }
    }
}

TEST(VectorImageTest, respectsThePaintersTransform) {
    QImage moved = blankImage(40);
    QPainter painter(&moved);
    painter.translate(8, 4);
    painter.scale(2, 2);
    const QTransform before = painter.transform();
    paintVectorImage(painter, QStringLiteral("plus"), 12);
    EXPECT_EQ(painter.transform(), before);
    painter.end();
    EXPECT_EQ(moved.copy(8, 4, 24, 24), painted(QStringLiteral("plus"), 24));
    EXPECT_EQ(moved.copy(0, 0, 40, 4), blankImage(40).copy(0, 0, 40, 4));
}

TEST(VectorImageDeathTest, terminatesOnAMissingImage) {
    // Qt runs threads, which a forked child does not have.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(painted(QStringLiteral("no.such"), 24), "Fatal error: a vector image is missing");
}

} // namespace
} // namespace kestrel
