#include "SettingsSidebar.h"

#include "FormatButton.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <optional>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

class SettingsSidebarTest : public ::testing::Test {
  protected:
    SettingsSidebarTest()
        : sidebar_(scenario_.model, [this] {
              return hasFFmpeg_ ? std::optional(FileURL("/usr/bin/ffmpeg")) : std::nullopt;
          }) {
        QObject::connect(scenario_.model.get(), &ConverterViewModel::willChange, &sidebar_,
                         &SettingsSidebar::refresh, Qt::QueuedConnection);
        sidebar_.resize(310, 640);
        sidebar_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&sidebar_, test::timeout));
    }

    std::vector<std::string> selectedFormats() const {
        std::vector<std::string> names;
        for (const FormatButton* button : sidebar_.findChildren<FormatButton*>()) {
            EXPECT_EQ(button->font().weight(),
                      button->isChecked() ? QFont::DemiBold : QFont::Normal);
            if (button->isChecked()) {
                names.push_back(utf8(button->text()));
            }
        }
        return names;
    }

    void click(const char* format) {
        QTest::mouseClick(findButton<FormatButton>(sidebar_, format), Qt::LeftButton);
        settle();
    }

    void setQuality(double quality) {
        ConversionSettings settings = scenario_.model->settings();
        settings.quality = quality;
        scenario_.model->setSettings(settings);
        settle();
    }

    std::vector<std::string> shownTexts() const {
        std::vector<std::string> texts;
        for (const QLabel* label : sidebar_.findChildren<QLabel*>()) {
            if (label->isVisible()) {
                texts.push_back(utf8(label->text()));
            }
        }
        return texts;
    }

    QPoint handleCenter() const {
        QStyleOptionSlider option;
        option.initFrom(slider());
        option.minimum = slider()->minimum();
        option.maximum = slider()->maximum();
        option.sliderPosition = slider()->sliderPosition();
        option.sliderValue = slider()->value();
        return slider()
            ->style()
            ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider())
            .center();
    }

    QSlider* slider() const { return sidebar_.findChild<QSlider*>(); }

    QComboBox* picker() const { return sidebar_.findChild<QComboBox*>(); }

    std::string text(const char* name) const { return utf8(find<QLabel>(sidebar_, name)->text()); }

    Scenario scenario_;
    bool hasFFmpeg_ = true;
    SettingsSidebar sidebar_;
};

TEST_F(SettingsSidebarTest, showsItsTextsForMP3) {
    EXPECT_THAT(shownTexts(),
                ElementsAre("Kestrel", "Opus, made universal", "OUTPUT FORMAT", "QUALITY", "82%",
                            "Higher quality creates larger MP3 files.", "PCM OPTIONS", "Bit depth",
                            "FFmpeg ready"));
}

TEST_F(SettingsSidebarTest, showsNoSliderForUncompressedFormats) {
    click("WAV");
    EXPECT_THAT(shownTexts(),
                ElementsAre("Kestrel", "Opus, made universal", "OUTPUT FORMAT", "QUALITY",
                            "AIFF and WAV preserve uncompressed PCM audio.", "PCM OPTIONS",
                            "Bit depth", "FFmpeg ready"));
    EXPECT_FALSE(slider()->isVisible());
}

TEST_F(SettingsSidebarTest, changesNoSettingByTheWheel) {
    click("WAV");
    for (QWidget* control : std::initializer_list<QWidget*>{slider(), picker()}) {
        for (const int delta : {-120, 120}) {
            const QPointF center(control->rect().center());
            QWheelEvent wheel(center, control->mapToGlobal(center), {}, {0, delta}, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(control, &wheel);
            EXPECT_FALSE(wheel.isAccepted());
        }
    }
    EXPECT_EQ(scenario_.model->settings(), (ConversionSettings{.format = OutputFormat::wav}));
    click("MP3");
    EXPECT_EQ(scenario_.model->settings(), ConversionSettings());
}

TEST_F(SettingsSidebarTest, offersTheFormatsInOrder) {
    std::vector<std::string> names;
    for (const FormatButton* button : sidebar_.findChildren<FormatButton*>()) {
        names.push_back(utf8(button->text()));
    }
    EXPECT_THAT(names, ElementsAre("MP3", "AIFF", "WAV"));
}

TEST_F(SettingsSidebarTest, selectsExactlyTheFormatThatWasClicked) {
    EXPECT_THAT(selectedFormats(), ElementsAre("MP3"));
    click("AIFF");
    EXPECT_THAT(selectedFormats(), ElementsAre("AIFF"));
    EXPECT_EQ(scenario_.model->settings(), (ConversionSettings{.format = OutputFormat::aiff}));
    click("WAV");
    EXPECT_THAT(selectedFormats(), ElementsAre("WAV"));
    EXPECT_EQ(scenario_.model->settings(), (ConversionSettings{.format = OutputFormat::wav}));
}

TEST_F(SettingsSidebarTest, keepsTheFormatThatIsClickedAgain) {
    click("MP3");
    EXPECT_THAT(selectedFormats(), ElementsAre("MP3"));
    EXPECT_EQ(scenario_.model->settings(), ConversionSettings{});
}

TEST_F(SettingsSidebarTest, selectsAFormatWithTheKeyboard) {
    auto* wav = findButton<FormatButton>(sidebar_, "WAV");
    wav->setFocus();
    QTest::keyClick(wav, Qt::Key_Space);
    settle();
    EXPECT_EQ(scenario_.model->settings().format, OutputFormat::wav);
}

TEST_F(SettingsSidebarTest, truncatesTheQualityToAnInteger) {
    setQuality(99.9);
    EXPECT_EQ(text("qualityLabel"), "99%");
}

TEST_F(SettingsSidebarTest, movesTheSliderWithTheModelAndWritesNothingBack) {
    setQuality(99.87654);
    EXPECT_EQ(slider()->value(), 99'877);
    EXPECT_EQ(scenario_.model->settings().quality, 99.87654);
}

TEST_F(SettingsSidebarTest, leavesAQualityOutsideTheSlidersRangeAlone) {
    setQuality(7);
    EXPECT_EQ(slider()->value(), slider()->minimum());
    EXPECT_EQ(text("qualityLabel"), "7%");
    EXPECT_EQ(scenario_.model->settings().quality, 7);
}

TEST_F(SettingsSidebarTest, reachesFromThirtyToAHundredPercent) {
    slider()->setFocus();
    QTest::keyClick(slider(), Qt::Key_Home);
    settle();
    EXPECT_EQ(scenario_.model->settings().quality, 30);
    EXPECT_EQ(text("qualityLabel"), "30%");
    QTest::keyClick(slider(), Qt::Key_End);
    settle();
    EXPECT_EQ(scenario_.model->settings().quality, 100);
    EXPECT_EQ(text("qualityLabel"), "100%");
}

TEST_F(SettingsSidebarTest, writesTheQualityWhileTheSliderIsDraggedThoughTheViewIsRefreshed) {
    const QPoint start = handleCenter();
    QTest::mousePress(slider(), Qt::LeftButton, {}, start);
    double previous = scenario_.model->settings().quality;
    for (int step = 1; step <= 3; ++step) {
        QTest::mouseMove(slider(), start - QPoint(step * 20, 0));
        settle();
        EXPECT_TRUE(slider()->isSliderDown());
        EXPECT_LT(scenario_.model->settings().quality, previous);
        previous = scenario_.model->settings().quality;
    }
    QTest::mouseRelease(slider(), Qt::LeftButton, {}, start - QPoint(60, 0));
    settle();
    EXPECT_EQ(scenario_.model->settings().quality, previous);
    EXPECT_EQ(slider()->value(), static_cast<int>(std::lround(previous * 1000)));
}

TEST_F(SettingsSidebarTest, remembersQualityAndBitDepthThroughOtherFormats) {
    setQuality(64);
    click("AIFF");
    picker()->setFocus();
    QTest::keyClick(picker(), Qt::Key_Up);
    settle();
    click("MP3");
    EXPECT_TRUE(slider()->isVisible());
    EXPECT_EQ(text("qualityLabel"), "64%");
    EXPECT_EQ(utf8(picker()->currentText()), "16-bit");
    EXPECT_FALSE(picker()->isEnabled());
    EXPECT_EQ(scenario_.model->settings(),
              (ConversionSettings{.bitDepth = PCMBitDepth::sixteen, .quality = 64}));
}

TEST_F(SettingsSidebarTest, enablesTheBitDepthForUncompressedFormatsOnly) {
    EXPECT_FALSE(picker()->isEnabled());
    EXPECT_TRUE(picker()->isVisible());
    EXPECT_EQ(utf8(picker()->currentText()), "24-bit");
    click("AIFF");
    EXPECT_TRUE(picker()->isEnabled());
    click("WAV");
    EXPECT_TRUE(picker()->isEnabled());
    click("MP3");
    EXPECT_FALSE(picker()->isEnabled());
}

TEST_F(SettingsSidebarTest, offersBothBitDepths) {
    ASSERT_EQ(picker()->count(), 2);
    EXPECT_EQ(utf8(picker()->itemText(0)), "16-bit");
    EXPECT_EQ(utf8(picker()->itemText(1)), "24-bit");
}

TEST_F(SettingsSidebarTest, opensAListInItsOwnColorsNotTheDesktops) {
    click("WAV");
    picker()->showPopup();
    const QAbstractItemView* list = picker()->view();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(list->window(), test::timeout));
    const auto background = [list](int row) {
        const QRect item = list->visualRect(list->model()->index(row, 0));
        const QPoint place = list->viewport()->mapTo(list->window(), item.center());
        return list->window()->grab().toImage().pixelColor(list->viewport()->width() - 8,
                                                           place.y());
    };
    EXPECT_EQ(background(0), sidebar_.palette().color(QPalette::Base));
    EXPECT_EQ(background(1), sidebar_.palette().color(QPalette::Highlight));
    picker()->hidePopup();
}

TEST_F(SettingsSidebarTest, noticesAnFFmpegThatIsInstalledLater) {
    hasFFmpeg_ = false;
    sidebar_.refresh();
    EXPECT_EQ(text("ffmpegStatus"), "FFmpeg required");
    hasFFmpeg_ = true;
    scenario_.model->setIsDropTargeted(true);
    settle();
    EXPECT_EQ(text("ffmpegStatus"), "FFmpeg ready");
}

TEST_F(SettingsSidebarTest, staysEditableWhileABatchRuns) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.model->isConverting());
    EXPECT_TRUE(slider()->isEnabled());
    click("AIFF");
    EXPECT_TRUE(picker()->isEnabled());
    EXPECT_EQ(scenario_.model->settings().format, OutputFormat::aiff);
}

TEST_F(SettingsSidebarTest, isDarkOnEveryDesktop) {
    const QPalette palette = sidebar_.palette();
    const QColor raised(0x2A, 0x2A, 0x3C);
    EXPECT_EQ(palette.color(QPalette::Window), QColor(0x17, 0x17, 0x29));
    for (const QPalette::ColorRole role : {QPalette::Button, QPalette::Base}) {
        EXPECT_EQ(palette.color(role), raised);
    }
    EXPECT_EQ(palette.color(QPalette::Light), raised.lighter());
    EXPECT_EQ(palette.color(QPalette::Mid), raised.lighter());
    EXPECT_EQ(palette.color(QPalette::Dark), raised.darker());
    EXPECT_EQ(palette.color(QPalette::Highlight), QColor(0xD0, 0x84, 0xFA));
    EXPECT_EQ(palette.color(QPalette::HighlightedText), QColor(0x17, 0x17, 0x29));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::BrightText}) {
        EXPECT_EQ(palette.color(role), QColor(Qt::white));
    }
}

TEST_F(SettingsSidebarTest, hasAFixedWidth) {
    EXPECT_EQ(sidebar_.minimumWidth(), 310);
    EXPECT_EQ(sidebar_.maximumWidth(), 310);
}

TEST_F(SettingsSidebarTest, givesEveryControlAName) {
    EXPECT_EQ(utf8(slider()->accessibleName()), "Quality");
    EXPECT_EQ(utf8(picker()->accessibleName()), "Bit depth");
    for (const FormatButton* button : sidebar_.findChildren<FormatButton*>()) {
        EXPECT_FALSE(button->accessibleName().isEmpty());
    }
}

} // namespace
} // namespace kestrel
