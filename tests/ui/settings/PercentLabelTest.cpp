#include "PercentLabel.h"

#include "Scenario.h"
#include "TextFont.h"

#include <QApplication>
#include <QFontMetrics>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class PercentLabelTest : public ::testing::Test {
  public:
    PercentLabelTest(const PercentLabelTest&) = delete;
    PercentLabelTest& operator=(const PercentLabelTest&) = delete;

  protected:
    PercentLabelTest() = default;

    ~PercentLabelTest() override { QApplication::setFont(font_); }

    static int widthAt(QFont font, int size) {
        font.setPixelSize(size);
        return QFontMetrics(font).horizontalAdvance(QStringLiteral("100%"));
    }

    const QFont font_ = QApplication::font();
};

TEST_F(PercentLabelTest, isAsLargeAsACaptionUnlessAHundredPercentWouldNotFit) {
    for (int body = 10; body <= 60; ++body) {
        QFont font = font_;
        font.setPixelSize(body);
        QApplication::setFont(font);
        const PercentLabel label(38);
        ASSERT_EQ(label.width(), 38);
        const QFont caption = TextFont{TextStyle::caption, QFont::DemiBold, true}.font();
        const int size = pixelSize(label.font());
        EXPECT_LE(widthAt(label.font(), size), 38) << body;
        EXPECT_TRUE(size == pixelSize(caption) || widthAt(label.font(), size + 1) > 38) << body;
        EXPECT_EQ(label.font().weight(), QFont::DemiBold);
    }
}

TEST_F(PercentLabelTest, followsTheApplicationFont) {
    QFont font = font_;
    font.setPixelSize(12);
    QApplication::setFont(font);
    const PercentLabel label(38);
    font.setPixelSize(60);
    QApplication::setFont(font);
    settle();
    EXPECT_EQ(label.font(), PercentLabel(38).font());
    EXPECT_LE(label.fontMetrics().horizontalAdvance(QStringLiteral("100%")), 38);
}

TEST_F(PercentLabelTest, isCentredOnOneLine) {
    PercentLabel label(38);
    label.setPercent(82);
    EXPECT_EQ(utf8(label.text()), "82%");
    EXPECT_EQ(label.alignment(), Qt::AlignCenter);
    EXPECT_FALSE(label.wordWrap());
}

} // namespace
} // namespace kestrel
