#include "ContentView.h"
#include "Scenario.h"
#include "SectionLabel.h"
#include "Timeout.h"

#include <QApplication>
#include <QFontInfo>
#include <QLabel>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace kestrel {
namespace {

class FontSizesTest : public ::testing::Test {
  protected:
    FontSizesTest() : view_(scenario_.model, [] { return FileURL("/usr/bin/ffmpeg"); }) {
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_, test::timeout));
        settle();
    }

    Scenario scenario_;
    ContentView view_;
};

TEST_F(FontSizesTest, scalesFontsWithTheApplicationFont) {
    scenario_.add({"a.opus"});

    struct Text {
        const char* name;
        double ratio;
        QFont::Weight weight;
    };

    const std::vector<Text> texts = {
        // clang-format off
        {"appTitle",            17.0 / 13,  QFont::Bold},
        {"appSubtitle",         10.0 / 13,  QFont::Normal},
        {"qualityLabel",        10.0 / 13,  QFont::DemiBold},
        {"qualityNote",         10.0 / 13,  QFont::Normal},
        {"ffmpegStatus",        10.0 / 13,  QFont::Normal},
        {"queueTitle",          17.0 / 13,  QFont::Bold},
        {"summary",             11.0 / 13,  QFont::Normal},
        {"dropTitle",           15.0 / 13,  QFont::Bold},
        {"dropExplanation",     11.0 / 13,  QFont::Normal},
        {"destinationCaption",  10.0 / 13,  QFont::Normal},
        {"destinationPath",     13.0 / 13,  QFont::Normal},
        {"name",                13.0 / 13,  QFont::Medium},
        {"folder",              10.0 / 13,  QFont::Normal},
        {"state",               10.0 / 13,  QFont::Normal},
        {"message",             10.0 / 13,  QFont::Normal},
        // clang-format on
    };
    const double body = QApplication::font().pointSizeF();
    const double smallest = 9 * 72.0 / view_.logicalDpiY();
    for (const Text& text : texts) {
        const QFont font = find<QLabel>(view_, text.name)->font();
        EXPECT_NEAR(font.pointSizeF(), std::max(body * text.ratio, smallest), 0.01) << text.name;
        EXPECT_EQ(font.weight(), text.weight) << text.name;
    }
    EXPECT_TRUE(QFontInfo(find<QLabel>(view_, "qualityLabel")->font()).fixedPitch());
}

TEST_F(FontSizesTest, keepsTheSectionLabelsAtTheirOwnSize) {
    for (const SectionLabel* label : view_.findChildren<SectionLabel*>()) {
        EXPECT_EQ(label->font().pixelSize(), 10);
        EXPECT_EQ(label->font().weight(), QFont::Bold);
        // Qt stores it in units of 1/64.
        EXPECT_NEAR(label->font().letterSpacing(), 1.1, 1.0 / 64);
        EXPECT_EQ(label->font().letterSpacingType(), QFont::AbsoluteSpacing);
    }
}

} // namespace
} // namespace kestrel
