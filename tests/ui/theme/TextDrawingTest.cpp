#include "TextDrawing.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <functional>

namespace kestrel {
namespace {

const QRect area(0, 0, 120, 30);

QImage painted(const std::function<void(QPainter&)>& paint) {
    QImage image(area.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    paint(painter);
    return image;
}

QImage drawn(const QString& text, Qt::LayoutDirection layout, Qt::Alignment alignment) {
    return painted([&](QPainter& painter) { drawAligned(painter, area, layout, alignment, text); });
}

/// The text in this direction of writing, at an edge of the area.
QImage expected(const QString& text, Qt::LayoutDirection direction, Qt::Alignment edge) {
    return painted([&](QPainter& painter) {
        painter.setLayoutDirection(direction);
        const Qt::Alignment alignment = edge | Qt::AlignVCenter | Qt::AlignAbsolute;
        painter.drawText(area, static_cast<int>(alignment) | Qt::TextSingleLine, text);
    });
}

TEST(TextDrawingTest, writesEachTextInItsOwnDirectionAtTheEdgeOfTheLayout) {
    const QString leftToRight = QStringLiteral("Help!");
    const QString rightToLeft = QStringLiteral("שיר!");
    for (const Qt::LayoutDirection layout : {Qt::LeftToRight, Qt::RightToLeft}) {
        const Qt::Alignment leading = layout == Qt::LeftToRight ? Qt::AlignLeft : Qt::AlignRight;
        const Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
        EXPECT_EQ(drawn(leftToRight, layout, alignment),
                  expected(leftToRight, Qt::LeftToRight, leading));
        EXPECT_EQ(drawn(rightToLeft, layout, alignment),
                  expected(rightToLeft, Qt::RightToLeft, leading));
        EXPECT_NE(drawn(rightToLeft, layout, alignment),
                  expected(rightToLeft, Qt::LeftToRight, leading));
    }
}

TEST(TextDrawingTest, breaksAWordOnlyIfTheModeLetsIt) {
    const QFont font = QGuiApplication::font();
    const QString word(20, u'x');
    const int half = QFontMetrics(font).horizontalAdvance(word) / 2 + 2;
    EXPECT_EQ(wrappedLines(word, font, half), QStringList{word});
    EXPECT_EQ(wrappedLines(word, font, half, QTextOption::WrapAtWordBoundaryOrAnywhere).size(), 2);
    EXPECT_EQ(wrappedLines(QStringLiteral("xxx xxx"), font, half).size(), 1);
}

TEST(TextDrawingTest, wrapsNothingUnlessAskedTo) {
    const QString text = QStringLiteral("one word and another one");
    ASSERT_GT(QFontMetrics(QGuiApplication::font()).horizontalAdvance(text), area.width());
    const Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    EXPECT_EQ(drawn(text, Qt::LeftToRight, alignment),
              expected(text, Qt::LeftToRight, Qt::AlignLeft));
    const QImage wrapped = painted([&](QPainter& painter) {
        drawAligned(painter, area, Qt::LeftToRight, alignment, text, true);
    });
    EXPECT_NE(wrapped, drawn(text, Qt::LeftToRight, alignment));
}

} // namespace
} // namespace kestrel
