#include "AppBadge.h"
#include "AppearanceFixture.h"
#include "Button.h"
#include "FormatButton.h"
#include "JobRow.h"
#include "MixedColor.h"
#include "PopUpButton.h"
#include "ProgressBar.h"
#include "QualitySlider.h"
#include "RunUntil.h"
#include "SettingsSidebar.h"
#include "StatusDot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kestrel {
namespace {

using AppearanceTest = AppearanceFixture;

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

TEST_F(AppearanceTest, paintsTheBadgeOfARowInAPalePurple) {
    scenario_.add({"a.opus"});
    const QImage badge = image(find<QWidget>(view_, "badge"));
    EXPECT_EQ(badge.size(), QSize(42, 42));
    EXPECT_COLOR(badge.pixelColor(21, 2), mixed(windowColor(), QColor{QRgb(lightPurple)}, 0.11), 2);
    EXPECT_COLOR(badge.pixelColor(0, 0), windowColor(), 0);
    EXPECT_COLOR(badge.pixelColor(4, 2), mixed(windowColor(), QColor{QRgb(lightPurple)}, 0.11), 2);
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
