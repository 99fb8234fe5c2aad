#include "TextFont.h"

#include <QApplication>
#include <QFontInfo>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class TextFontTest : public ::testing::Test {
  public:
    TextFontTest(const TextFontTest&) = delete;
    TextFontTest& operator=(const TextFontTest&) = delete;

  protected:
    ~TextFontTest() override { QApplication::setFont(originalFont_); }

    TextFontTest() = default;

    static void setPixels(int size) {
        QFont font = QApplication::font();
        font.setPixelSize(size);
        QApplication::setFont(font);
    }

    static int pixels(TextStyle style) { return TextFont{style}.font().pixelSize(); }

  private:
    const QFont originalFont_ = QApplication::font();
};

TEST_F(TextFontTest, scalesWithTheApplicationFont) {
    setPixels(13);
    EXPECT_EQ(pixels(TextStyle::body), 13);
    EXPECT_EQ(pixels(TextStyle::title2), 17);
    EXPECT_EQ(pixels(TextStyle::title3), 15);
    EXPECT_EQ(pixels(TextStyle::subheadline), 11);
    EXPECT_EQ(pixels(TextStyle::caption), 10);
    EXPECT_EQ(pixels(TextStyle::caption2), 10);
    setPixels(26);
    EXPECT_EQ(pixels(TextStyle::title2), 34);
    EXPECT_EQ(pixels(TextStyle::caption), 20);
}

TEST_F(TextFontTest, isNeverSmallerThanNinePixels) {
    setPixels(8);
    EXPECT_EQ(pixels(TextStyle::caption), 9);
    EXPECT_EQ(pixels(TextStyle::body), 9);
    QFont font;
    font.setPointSizeF(5);
    QApplication::setFont(font);
    EXPECT_EQ(QFontInfo(TextFont{TextStyle::caption}.font()).pixelSize(), 9);
}

TEST_F(TextFontTest, computesThePixelSizeOfQFontInfo) {
    for (const double points : {5.0, 7.5, 9.0, 10.2, 13.0, 21.3}) {
        QFont font = QApplication::font();
        font.setPointSizeF(points);
        EXPECT_EQ(pixelSize(font), QFontInfo(font).pixelSize()) << points;
        font.setPixelSize(static_cast<int>(points));
        EXPECT_EQ(pixelSize(font), QFontInfo(font).pixelSize()) << points;
    }
}

TEST_F(TextFontTest, keepsASizeInPoints) {
    QFont font;
    font.setPointSizeF(13);
    QApplication::setFont(font);
    EXPECT_EQ((TextFont{TextStyle::title2}.font().pointSizeF()), 17);
}

TEST_F(TextFontTest, usesTheSystemsFixedFontIfMonospaced) {
    EXPECT_TRUE(QFontInfo(TextFont{TextStyle::caption, QFont::Normal, true}.font()).fixedPitch());
    EXPECT_FALSE(QFontInfo(TextFont{TextStyle::caption}.font()).fixedPitch());
}

TEST_F(TextFontTest, hasFontsOfAFixedSizeToo) {
    setPixels(30);
    EXPECT_EQ(systemFont(10).pixelSize(), 10);
    EXPECT_EQ(systemFont(10).weight(), QFont::Normal);
    EXPECT_EQ(systemFont(10, QFont::Bold).weight(), QFont::Bold);
}

} // namespace
} // namespace kestrel
