#include "AppBadge.h"
#include "Button.h"
#include "ContentView.h"
#include "DropZone.h"
#include "FormatButton.h"
#include "JobRow.h"
#include "Label.h"
#include "MixedColor.h"
#include "PopUpButton.h"
#include "ProgressBar.h"
#include "QualitySlider.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "SettingsSidebar.h"
#include "StatusDot.h"
#include "Timeout.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace kestrel {
namespace {

constexpr int lightPurple = 0x9540C8;
constexpr int darkPurple = 0xD084FA;

bool isNear(const QColor& a, const QColor& b, int tolerance) {
    return std::abs(a.red() - b.red()) <= tolerance &&
           std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

#define EXPECT_COLOR(actual, expected, tolerance)                                                  \
    EXPECT_TRUE(isNear(actual, expected, tolerance))                                               \
        << utf8((actual).name()) << " is not " << utf8((expected).name())

/// Checks the window's pixels, in a light palette by default.
class AppearanceTest : public ::testing::Test {
  protected:
    AppearanceTest()
        : view_(scenario_.model, [this] {
              return hasFFmpeg_ ? std::optional(FileURL("/usr/bin/ffmpeg")) : std::nullopt;
          }) {
        QPalette light(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE));
        view_.setPalette(light);
        view_.resize(960, 640);
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_, test::timeout));
        settle();
    }

    void makeDark() {
        view_.setPalette(QPalette(QColor(Qt::white), QColor(0x20, 0x20, 0x22)));
        settle();
    }

    QImage image() { return view_.grab().toImage(); }

    QImage image(QWidget* widget) {
        return image().copy(QRect(widget->mapTo(&view_, QPoint()), widget->size()));
    }

    DropZone* zone() const { return view_.findChild<DropZone*>(); }

    QColor windowColor() const { return view_.palette().color(QPalette::Window); }

    QColor colorOf(const char* name) const { return find<Label>(view_, name)->color(); }

    /// The colours of the drop zone's outline down its left side, `column` pixels from the edge.
    std::vector<QColor> outline(int column) {
        const QImage picture = image(zone());
        std::vector<QColor> colors;
        for (int y = 60; y < picture.height() - 60; ++y) {
            colors.push_back(picture.pixelColor(column, y));
        }
        return colors;
    }

    /// The strongest colour of the outline in that column.
    QColor outlineColor(int column) {
        QColor strongest = windowColor();
        for (const QColor& color : outline(column)) {
            if (std::abs(color.green() - windowColor().green()) >
                std::abs(strongest.green() - windowColor().green())) {
                strongest = color;
            }
        }
        return strongest;
    }

    /// The lengths of the dashes and gaps, in pixels, without the cut ones at both ends.
    std::vector<int> dashes(int column) {
        const QColor dashColor = outlineColor(column);
        std::vector<int> runs;
        bool wasDash = false;
        for (const QColor& color : outline(column)) {
            const bool isDash = std::abs(color.green() - dashColor.green()) <
                                std::abs(color.green() - windowColor().green());
            if (isDash != wasDash || runs.empty()) {
                runs.push_back(0);
            }
            ++runs.back();
            wasDash = isDash;
        }
        runs.erase(runs.begin());
        runs.pop_back();
        return runs;
    }

    Scenario scenario_;
    bool hasFFmpeg_ = true;
    ContentView view_;
};

TEST_F(AppearanceTest, paintsTheSidebarFromCornerToCorner) {
    const QImage sidebar = image(view_.findChild<SettingsSidebar*>());
    EXPECT_COLOR(sidebar.pixelColor(0, 0), QColor::fromRgbF(0.08F, 0.10F, 0.16F), 1);
    EXPECT_COLOR(sidebar.pixelColor(309, 639), QColor::fromRgbF(0.10F, 0.07F, 0.16F), 1);
}

TEST_F(AppearanceTest, paintsTheBadgeFromPurpleToBlue) {
    const QImage badge = image(view_.findChild<AppBadge*>());
    const QColor purple(QRgb(0xFF9843CE));
    const QColor blue(QRgb(0xFF0A84FF));
    for (const int place : {6, 37}) {
        EXPECT_COLOR(badge.pixelColor(place, place), mixed(purple, blue, (place + 0.5) / 44), 4);
    }
    EXPECT_FALSE(isNear(badge.pixelColor(0, 0), purple, 40)) << "the corner is round";
}

TEST_F(AppearanceTest, letsTheBadgeGlow) {
    const QImage sidebar = image(view_.findChild<SettingsSidebar*>());
    const QColor far = sidebar.pixelColor(2, 54);
    int previous = far.red() + 4;
    for (const int x : {16, 20, 23}) {
        const int red = sidebar.pixelColor(x, 54).red();
        EXPECT_GT(red, previous) << x;
        previous = red;
    }
    // At the very edge half of the glow is left.
    const QColor expected = mixed(far, QColor(QRgb(darkPurple)), 0.35 / 2);
    EXPECT_COLOR(sidebar.pixelColor(23, 54), expected, 12);
}

TEST_F(AppearanceTest, highlightsTheSelectedFormat) {
    const auto buttons = view_.findChildren<FormatButton*>();
    const QImage selected = image(buttons[0]);
    const QImage other = image(buttons[1]);
    const QPoint blank(150, 18);
    EXPECT_COLOR(selected.pixelColor(blank), mixed(other.pixelColor(blank), Qt::white, 0.11), 2);
    EXPECT_COLOR(other.pixelColor(blank), QColor(0x15, 0x18, 0x29), 3);
    EXPECT_COLOR(selected.pixelColor(0, 0), other.pixelColor(0, 0), 3);
}

TEST_F(AppearanceTest, fillsAFormatOnlyWhileItIsSelected) {
    const auto buttons = view_.findChildren<FormatButton*>();
    const QPoint blank(150, 18);
    const QPoint symbol(12 + 9, 18);
    for (FormatButton* button : {buttons[0], buttons[1]}) {
        const QImage resting = image(button);
        QTest::mouseMove(button, blank);
        ASSERT_TRUE(test::runUntil([button] { return button->underMouse(); }));
        EXPECT_EQ(image(button).pixelColor(blank), resting.pixelColor(blank)) << "hovered";
        const bool isOutlined = image(button).pixelColor(150, 0) != resting.pixelColor(150, 0);
        EXPECT_EQ(isOutlined, !button->isChecked());
        button->setDown(true);
        EXPECT_EQ(image(button).pixelColor(blank), resting.pixelColor(blank)) << "pressed";
        EXPECT_NE(image(button).copy(QRect(symbol - QPoint(9, 9), QSize(18, 18))),
                  resting.copy(QRect(symbol - QPoint(9, 9), QSize(18, 18))));
        button->setDown(false);
    }
}

TEST_F(AppearanceTest, dimsADisabledLabelAsMuchAsItsPicker) {
    auto* label = find<Label>(view_, "bitDepthLabel");
    ASSERT_FALSE(label->isEnabled());
    EXPECT_NEAR(label->color().alphaF(), 0.4, 0.01);
    const QImage picker = image(view_.findChild<PopUpButton*>());
    const QImage caption = image(label);
    const auto brightest = [](const QImage& picture, const QRect& part) {
        int result = 0;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                result = std::max(result, picture.pixelColor(x, y).green());
            }
        }
        return result;
    };
    // The picker's text, on its tinted background.
    const QRect text(8, 4, 50, picker.height() - 8);
    const int below = picker.pixelColor(picker.width() - 40, picker.height() / 2).green();
    const int expected = mixed(QColor(below, below, below), Qt::white, 0.4).green();
    EXPECT_NEAR(brightest(picker, text), expected, 4);
    const int under = caption.pixelColor(0, 0).green();
    EXPECT_NEAR(brightest(caption, caption.rect()),
                mixed(QColor(under, under, under), Qt::white, 0.4).green(), 4);
}

TEST_F(AppearanceTest, checksTheSelectedFormatInPurple) {
    const auto buttons = view_.findChildren<FormatButton*>();
    const QPoint checkMark(262 - 12 - 9, 18 - 6);
    EXPECT_COLOR(image(buttons[0]).pixelColor(checkMark), QColor(QRgb(darkPurple)), 2);
    EXPECT_FALSE(isNear(image(buttons[1]).pixelColor(checkMark), QColor(QRgb(darkPurple)), 60));
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    settle();
    QTest::mouseMove(&view_, QPoint(5, 5));
    settle();
    EXPECT_COLOR(image(buttons[1]).pixelColor(checkMark), QColor(QRgb(darkPurple)), 2);
    EXPECT_FALSE(isNear(image(buttons[0]).pixelColor(checkMark), QColor(QRgb(darkPurple)), 60));
}

TEST_F(AppearanceTest, alignsTheSliderTrackToTheMiddleOfItsThumbAndToPixels) {
    const QImage slider = image(view_.findChild<QualitySlider*>());
    const int middle = slider.height() / 2;
    const QColor purple{QRgb(darkPurple)};
    const QColor background = slider.pixelColor(40, 2);
    EXPECT_COLOR(slider.pixelColor(40, middle - 3), background, 3);
    for (const int y : {middle - 2, middle - 1, middle, middle + 1}) {
        EXPECT_COLOR(slider.pixelColor(40, y), purple, 1);
    }
    EXPECT_COLOR(slider.pixelColor(40, middle + 2), background, 3);
}

TEST_F(AppearanceTest, centresTheTextsOfTheDropZone) {
    for (const char* name : {"dropTitle", "dropExplanation"}) {
        const auto* label = find<Label>(view_, name);
        const QImage picture = image(find<Label>(view_, name));
        QRect ink;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (!isNear(picture.pixelColor(x, y), windowColor(), 10)) {
                    ink |= QRect(x, y, 1, 1);
                }
            }
        }
        EXPECT_GT(picture.width() - ink.width(), 50) << name;
        EXPECT_NEAR(ink.center().x(), picture.width() / 2.0, 2) << name;
        EXPECT_TRUE(label->alignment().testFlag(Qt::AlignTop)) << name;
    }
}

TEST_F(AppearanceTest, fillsTheButtonForTheNextStepOnlyInPurple) {
    QTest::mouseMove(&view_, QPoint(5, 5));
    settle();
    scenario_.chooseDestination("/no-such-folder/Out");
    const auto fillOf = [this](const char* text) {
        return image(findButton<Button>(view_, text)).pixelColor(5, 12);
    };
    const QColor bordered = mixed(windowColor(), Qt::white, 0.8);
    for (const char* text : {"Choose Audio", "Choose Folder", "Folder"}) {
        EXPECT_COLOR(fillOf(text), bordered, 1);
    }
    EXPECT_COLOR(fillOf("Add Audio"), QColor(QRgb(lightPurple)), 0);
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus"});
    EXPECT_COLOR(fillOf("Convert 1 File"), QColor(QRgb(lightPurple)), 0);
    const QImage reveal = image(find<Button>(view_, "revealButton"));
    EXPECT_COLOR(reveal.pixelColor(2, 12), windowColor(), 0);
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(0));
    settle();
    EXPECT_COLOR(fillOf("Cancel"), bordered, 1);
}

TEST_F(AppearanceTest, drawsAPaleLineBesideTheSidebarAndAStrongerOneAboveTheFooter) {
    EXPECT_COLOR(image().pixelColor(310, 300), mixed(windowColor(), Qt::black, 0.2 * 0.55), 1);
    EXPECT_COLOR(image().pixelColor(311, 300), windowColor(), 0);
    const QImage divider = image(find<QWidget>(view_, "footerDivider"));
    EXPECT_COLOR(divider.pixelColor(0, 0), mixed(windowColor(), Qt::black, 0.2), 1);
    EXPECT_COLOR(divider.pixelColor(divider.width() - 1, 0), divider.pixelColor(0, 0), 0);
}

TEST_F(AppearanceTest, paintsARingOnTheDiscOfTheDropZone) {
    const QImage disc = image(find<QWidget>(view_, "dropBadge"));
    const QColor purple{QRgb(lightPurple)};
    const QColor fill = mixed(windowColor(), purple, 0.1);
    EXPECT_COLOR(disc.pixelColor(1, 56), fill, 2);
    EXPECT_COLOR(disc.pixelColor(110, 56), fill, 2);
    EXPECT_COLOR(disc.pixelColor(3, 20), windowColor(), 0);
    // A ring of 88 pixels, one pixel wide.
    const QColor ring = mixed(fill, purple, 0.25);
    for (const int place : {12, 99}) {
        EXPECT_COLOR(disc.pixelColor(place, 55), ring, 4);
        EXPECT_COLOR(disc.pixelColor(56, place), ring, 4);
    }
    for (const int place : {10, 14, 97, 101}) {
        EXPECT_COLOR(disc.pixelColor(place, 56), fill, 2);
    }
}

TEST_F(AppearanceTest, paintsTheBadgeOfARowInAPalePurple) {
    scenario_.add({"a.opus"});
    const QImage badge = image(find<QWidget>(view_, "badge"));
    EXPECT_EQ(badge.size(), QSize(42, 42));
    EXPECT_COLOR(badge.pixelColor(21, 2), mixed(windowColor(), QColor{QRgb(lightPurple)}, 0.11), 2);
    EXPECT_COLOR(badge.pixelColor(0, 0), windowColor(), 0);
    EXPECT_COLOR(badge.pixelColor(4, 2), mixed(windowColor(), QColor{QRgb(lightPurple)}, 0.11), 2);
}

TEST_F(AppearanceTest, outlinesTheDropZoneThinAndPale) {
    const QColor pale = mixed(windowColor(), Qt::black, 0.74 * 0.2);
    EXPECT_COLOR(outlineColor(25), windowColor(), 0);
    EXPECT_COLOR(outlineColor(26), pale, 2);
    EXPECT_COLOR(outlineColor(27), windowColor(), 0);
}

TEST_F(AppearanceTest, outlinesTheTargetedDropZoneTwiceAsWideInPurple) {
    const QImage idle = image(zone());
    scenario_.model->setIsDropTargeted(true);
    settle();
    const QColor purple{QRgb(lightPurple)};
    EXPECT_COLOR(outlineColor(25), windowColor(), 0);
    EXPECT_COLOR(outlineColor(26), purple, 2);
    EXPECT_COLOR(outlineColor(27), purple, 2);
    EXPECT_COLOR(outlineColor(28), windowColor(), 0);
    // Nothing else changes.
    const QRect inside = zone()->rect().adjusted(50, 45, -50, -45);
    EXPECT_EQ(image(zone()).copy(inside), idle.copy(inside));
    scenario_.model->setIsDropTargeted(false);
    settle();
    EXPECT_EQ(image(zone()), idle);
}

TEST_F(AppearanceTest, dashesTheOutlineEverySevenPixels) {
    for (const bool isTargeted : {false, true}) {
        scenario_.model->setIsDropTargeted(isTargeted);
        settle();
        const std::vector<int> runs = dashes(26);
        ASSERT_GT(runs.size(), 10U);
        for (const int run : runs) {
            EXPECT_NEAR(run, 7, 1);
        }
        const int first = runs[0] + runs[1];
        EXPECT_NEAR(first, 14, 1);
    }
}

TEST_F(AppearanceTest, keepsTheOutlineAwayFromTheEdges) {
    scenario_.model->setIsDropTargeted(true);
    settle();
    const QImage picture = image(zone());
    const QColor purple{QRgb(lightPurple)};
    const auto isOutline = [&](int x, int y) {
        return isNear(picture.pixelColor(x, y), purple, 40);
    };
    QRect bounds;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (isOutline(x, y)) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    EXPECT_EQ(bounds, zone()->rect().adjusted(26, 20, -26, -20));
}

TEST_F(AppearanceTest, colorsTheStatusOfFFmpeg) {
    const auto* dot = view_.findChild<StatusDot*>();
    EXPECT_EQ(dot->color(), QColor(QRgb(0xFF32D74B)));
    EXPECT_COLOR(image(view_.findChild<StatusDot*>()).pixelColor(3, 3), QColor(0x32, 0xD7, 0x4B),
                 0);
    hasFFmpeg_ = false;
    scenario_.model->setIsDropTargeted(true);
    settle();
    EXPECT_EQ(dot->color(), QColor(QRgb(0xFFFF9F0A)));
    EXPECT_COLOR(image(view_.findChild<StatusDot*>()).pixelColor(3, 3), QColor(0xFF, 0x9F, 0x0A),
                 0);
}

TEST_F(AppearanceTest, colorsTheStatesOfJobs) {
    scenario_.failWith("a.opus", "no such stream");
    scenario_.holdBack("c.opus", 0.5);
    scenario_.add({"a.opus", "b.opus", "c.opus", "d.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(2));
    settle();
    std::vector<std::string> colors;
    for (const auto& job : scenario_.model->jobs()) {
        for (const JobRow* row : view_.findChildren<JobRow*>()) {
            if (row->isVisible() && row->job().id() == job.id()) {
                colors.push_back(utf8(find<Label>(*row, "state")->color().name(QColor::HexArgb)));
                EXPECT_EQ(find<Label>(*row, "message")->color(), QColor(0xC0, 0x24, 0x1C));
            }
        }
    }
    EXPECT_EQ(colors,
              (std::vector<std::string>{"#ffc0241c", "#ff1b7a2e", "#ff9540c8", "#bd000000"}));
}

TEST_F(AppearanceTest, fillsProgressInPurple) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus", "b.opus"});
    scenario_.start();
    auto* bar = find<ProgressBar>(view_, "overallProgress");
    ASSERT_TRUE(test::runUntil([bar] { return bar->value() == 250; }));
    settle();
    const QImage picture = image(bar);
    const int middle = picture.height() / 2;
    EXPECT_COLOR(picture.pixelColor(picture.width() / 4 - 6, middle), QColor(QRgb(lightPurple)), 1);
    EXPECT_COLOR(picture.pixelColor(picture.width() / 4 + 6, middle),
                 mixed(windowColor(), Qt::black, 0.12), 2);
}

TEST_F(AppearanceTest, followsADarkPaletteExceptInTheSidebar) {
    const QImage sidebar = image(view_.findChild<SettingsSidebar*>());
    makeDark();
    EXPECT_EQ(image(view_.findChild<SettingsSidebar*>()), sidebar);
    EXPECT_COLOR(image().pixelColor(955, 5), QColor(0x20, 0x20, 0x22), 0);
    EXPECT_EQ(colorOf("queueTitle"), QColor(Qt::white));
    EXPECT_EQ(colorOf("summary").alpha(), 189);
    EXPECT_COLOR(outlineColor(26), mixed(windowColor(), Qt::white, 0.74 * 0.2), 2);
    scenario_.model->setIsDropTargeted(true);
    settle();
    EXPECT_COLOR(outlineColor(26), QColor(QRgb(darkPurple)), 2);
}

TEST_F(AppearanceTest, dimsSecondaryTexts) {
    EXPECT_EQ(colorOf("queueTitle"), QColor(Qt::black));
    EXPECT_EQ(colorOf("summary").alpha(), 189);
    EXPECT_EQ(colorOf("dropExplanation").alpha(), 189);
    EXPECT_EQ(colorOf("appSubtitle").rgba(), qRgba(255, 255, 255, 189));
    EXPECT_EQ(colorOf("appTitle"), QColor(Qt::white));
}

} // namespace
} // namespace kestrel
