#include "AppBadge.h"
#include "Badge.h"
#include "ContentView.h"
#include "ElidedLabel.h"
#include "FormatButton.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "Label.h"
#include "PixelArt.h"
#include "Scenario.h"
#include "SectionLabel.h"
#include "SymbolPlaces.h"
#include "SymbolView.h"
#include "TextFont.h"
#include "ThemeColor.h"
#include "Timeout.h"

#include <QImage>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

const QColor purpleOnLight(0x95, 0x40, 0xC8);
const QColor purpleOnDark(0xD0, 0x84, 0xFA);

/// Checks which symbol and which font is where, in a light palette.
class StylesTest : public ::testing::Test {
  protected:
    StylesTest() : view_(scenario_.model, [] { return FileURL("/usr/bin/ffmpeg"); }) {
        view_.setPalette(palette_);
        view_.resize(960, 640);
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_, test::timeout));
        QTest::mouseMove(&view_, QPoint(5, 5));
        settle();
    }

    QImage image(const QWidget* widget) {
        return view_.grab(QRect(widget->mapTo(&view_, QPoint()), widget->size())).toImage();
    }

    QRect place(Symbol symbol, int size, const QColor& color, const QWidget* widget) {
        return placeOf(symbol, size, color, image(widget));
    }

    /// Shows a complete and a waiting row, and returns the one at the index.
    JobRow* row(std::size_t index) {
        if (scenario_.model->jobs().empty()) {
            scenario_.add({"a.opus"});
            EXPECT_TRUE(scenario_.convertAll());
            scenario_.add({"b.opus"});
        }
        return view_.findChild<JobScrollArea*>()->rows().at(index);
    }

    static void expectFont(const QWidget& parent, const char* name, const TextFont& font) {
        EXPECT_EQ(find<QWidget>(parent, name)->font(), font.font()) << name;
    }

    static int bodySymbolSize() { return symbolSize(TextFont{}.font()); }

    const QPalette palette_{QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE)};
    Scenario scenario_;
    ContentView view_;
};

TEST_F(StylesTest, showsASymbolForEachFormatAndChecksTheSelectedOne) {
    const auto buttons = view_.findChildren<FormatButton*>();
    const QRect leading(12, 9, 18, 18);
    EXPECT_EQ(place(Symbol::musicNote, 18, Qt::white, buttons[0]), leading);
    EXPECT_EQ(place(Symbol::waveformBadgeMagnifyingglass, 18, Qt::white, buttons[1]), leading);
    EXPECT_EQ(place(Symbol::waveform, 18, Qt::white, buttons[2]), leading);
    const Symbol check = Symbol::checkmarkCircleFill;
    EXPECT_EQ(place(check, 16, purpleOnDark, buttons[0]).topLeft(), QPoint(262 - 12 - 17, 10));
    EXPECT_EQ(place(check, 16, purpleOnDark, buttons[1]), QRect());
    EXPECT_EQ(place(check, 16, purpleOnDark, buttons[2]), QRect());
}

TEST_F(StylesTest, showsTheProgramsSymbolInItsBadge) {
    const int size = symbolSize(TextFont{TextStyle::title2}.font());
    const QRect symbol =
        place(Symbol::waveformBadgePlus, size, Qt::white, view_.findChild<AppBadge*>());
    EXPECT_NEAR(symbol.center().x(), 22, 1);
    EXPECT_NEAR(symbol.center().y(), 22, 1);
}

TEST_F(StylesTest, showsAnArrowIntoADocumentInTheDropZone) {
    const QRect symbol =
        place(Symbol::arrowDownDocFill, 44, purpleOnLight, find<Badge>(view_, "dropBadge"));
    EXPECT_EQ(symbol, QRect(34, 34, 44, 44));
}

TEST_F(StylesTest, showsSymbolsInTheButtonsOfTheQueue) {
    row(0);
    const int size = bodySymbolSize();
    const auto expectSymbol = [&](const char* name, Symbol symbol, const QColor& color) {
        EXPECT_FALSE(place(symbol, size, color, find<QWidget>(view_, name)).isEmpty()) << name;
    };
    expectSymbol("folderButton", Symbol::folderBadgePlus, Qt::black);
    expectSymbol("addButton", Symbol::plus, Qt::white);
    expectSymbol("revealButton", Symbol::arrowRightCircle, Qt::black);
    expectSymbol("startButton", Symbol::boltFill, Qt::white);
    expectSymbol("destinationButton", Symbol::folderFill, purpleOnLight);
}

TEST_F(StylesTest, showsSymbolsInTheRows) {
    const JobRow* complete = row(0);
    const QRect badge =
        place(Symbol::waveform, bodySymbolSize(), purpleOnLight, find<Badge>(*complete, "badge"));
    EXPECT_NEAR(badge.center().x(), 21, 1);
    EXPECT_NEAR(badge.center().y(), 21, 1);
    const int size = symbolSize(TextFont{TextStyle::title3}.font());
    EXPECT_FALSE(place(Symbol::checkmarkCircleFill, size, QColor(0x1B, 0x7A, 0x2E),
                       find<SymbolView>(*complete, "checkMark"))
                     .isEmpty());
    // Black at an opacity of 0.82 * 0.7.
    const QColor grey(0x65, 0x65, 0x65);
    EXPECT_FALSE(place(Symbol::xmarkCircleFill, bodySymbolSize(), grey,
                       find<QWidget>(*row(1), "removeButton"))
                     .isEmpty());
}

TEST_F(StylesTest, hasAFontForEachText) {
    expectFont(view_, "appTitle", {TextStyle::title2, QFont::Bold});
    expectFont(view_, "appSubtitle", {TextStyle::caption});
    expectFont(view_, "qualityNote", {TextStyle::caption});
    expectFont(view_, "qualityLabel", {TextStyle::caption, QFont::DemiBold, true});
    expectFont(view_, "ffmpegStatus", {TextStyle::caption});
    expectFont(view_, "queueTitle", {TextStyle::title2, QFont::Bold});
    expectFont(view_, "summary", {TextStyle::subheadline});
    expectFont(view_, "dropTitle", {TextStyle::title3, QFont::Bold});
    expectFont(view_, "dropExplanation", {TextStyle::subheadline});
    expectFont(view_, "destinationCaption", {TextStyle::caption});
    expectFont(view_, "destinationPath", {});
    expectFont(view_, "addButton", {TextStyle::body, QFont::DemiBold});
    expectFont(view_, "folderButton", {});
    for (const SectionLabel* label : view_.findChildren<SectionLabel*>()) {
        EXPECT_EQ(label->font().pixelSize(), 10);
        EXPECT_EQ(label->font().weight(), QFont::Bold);
        EXPECT_NEAR(label->font().letterSpacing(), 1.1, 0.02);
        EXPECT_EQ(label->font().letterSpacingType(), QFont::AbsoluteSpacing);
        EXPECT_EQ(label->color(), ThemeColor(ThemeColor::Name::secondary).color(label->palette()));
    }
    const auto buttons = view_.findChildren<FormatButton*>();
    EXPECT_EQ(buttons[0]->font(), (TextFont{TextStyle::subheadline, QFont::DemiBold}.font()));
    EXPECT_EQ(buttons[1]->font(), TextFont{TextStyle::subheadline}.font());
}

TEST_F(StylesTest, hasAFontForEachTextOfARow) {
    const JobRow& waiting = *row(1);
    expectFont(waiting, "name", {TextStyle::body, QFont::Medium});
    expectFont(waiting, "folder", {TextStyle::caption});
    expectFont(waiting, "bullet", {TextStyle::caption});
    expectFont(waiting, "state", {TextStyle::caption});
    expectFont(waiting, "message", {TextStyle::caption2});
    const QColor secondary = ThemeColor(ThemeColor::Name::secondary).color(waiting.palette());
    EXPECT_EQ(find<Label>(waiting, "folder")->color(), secondary);
    EXPECT_EQ(find<Label>(waiting, "bullet")->color(), secondary);
    EXPECT_EQ(find<Label>(waiting, "name")->color(), QColor(Qt::black));
    EXPECT_EQ(find<Label>(view_, "destinationCaption")->color(), secondary);
}

TEST_F(StylesTest, elidesNamesAtTheirEndAndThePathInTheMiddle) {
    scenario_.add({"a" + std::string(300, 'x') + "z.opus"});
    scenario_.chooseDestination("/no-such-folder/" + std::string(300, 'x') + "/end");
    const auto ink = [this](const QImage& image) {
        return pixelArt(image, palette_.color(QPalette::Window), Qt::black);
    };
    const auto isElided = [&](const ElidedLabel& label, Qt::TextElideMode mode) {
        ElidedLabel expected(mode, {});
        expected.setPalette(palette_);
        expected.setFont(label.font());
        expected.setText(label.text());
        expected.resize(label.size());
        return ink(image(&label)) == ink(expected.grab().toImage());
    };
    const JobRow& row = *view_.findChild<JobScrollArea*>()->rows().at(0);
    const auto& name = *find<ElidedLabel>(row, "name");
    EXPECT_TRUE(isElided(name, Qt::ElideRight));
    EXPECT_FALSE(isElided(name, Qt::ElideMiddle));
    const auto& path = *find<ElidedLabel>(view_, "destinationPath");
    EXPECT_TRUE(isElided(path, Qt::ElideMiddle));
    EXPECT_FALSE(isElided(path, Qt::ElideRight));
}

} // namespace
} // namespace kestrel
