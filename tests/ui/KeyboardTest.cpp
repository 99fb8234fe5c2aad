#include "Alert.h"
#include "Button.h"
#include "ContentView.h"
#include "FFmpegService.h"
#include "FormatButton.h"
#include "KeyboardFocus.h"
#include "PopUpButton.h"
#include "QualitySlider.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "SlowWindowManager.h"

#include <QAbstractItemView>
#include <QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

/// Uses the window with the keyboard alone.
class KeyboardTest : public ::testing::Test {
  protected:
    KeyboardTest() : view_(scenario_.model, FFmpegService::locateBinary) {
        view_.resize(960, 640);
        EXPECT_TRUE(showActive(view_));
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus != nullptr ? focus : &view_, key, modifiers);
        settle();
    }

    static std::string focusName() {
        const QWidget* focus = QApplication::focusWidget();
        if (focus == nullptr) {
            return "nothing";
        }
        const auto* button = qobject_cast<const QAbstractButton*>(focus);
        return utf8(button != nullptr && focus->accessibleName().isEmpty()
                        ? button->text()
                        : focus->accessibleName());
    }

    /// The names of all tab stops, from the first format on until it has the focus again.
    std::vector<std::string> tabOrder(Qt::Key key) {
        view_.findChild<FormatButton*>()->setFocus(Qt::TabFocusReason);
        std::vector<std::string> names;
        do {
            names.push_back(focusName());
            press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        } while (names.size() < 30 && focusName() != "MP3");
        return names;
    }

    static void focus(QWidget* widget) {
        widget->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(widget->hasFocus());
    }

    /// Through the start button, which then has the focus.
    void raiseAlert() {
        scenario_.add({"a.opus"});
        focus(find<Button>(view_, "startButton"));
        press(Qt::Key_Space);
        ASSERT_NE(view_.findChild<Alert*>(), nullptr);
    }

    void dismissAlert() {
        ASSERT_TRUE(test::runUntil([] { return focusName() == "OK"; }));
        press(Qt::Key_Escape);
        EXPECT_EQ(scenario_.model->alertMessage(), std::nullopt);
    }

    Scenario scenario_;
    ContentView view_;
};

TEST_F(KeyboardTest, tabsThroughAnEmptyWindowInReadingOrder) {
    EXPECT_THAT(tabOrder(Qt::Key_Tab),
                ElementsAre("MP3", "AIFF", "WAV", "Quality", "Folder", "Add Audio", "Choose Audio",
                            "Choose Folder", "Save to Choose destination…"));
}

TEST_F(KeyboardTest, tabsThroughAFilledWindowInReadingOrder) {
    ConversionSettings settings;
    settings.format = OutputFormat::wav;
    scenario_.model->setSettings(settings);
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    EXPECT_THAT(tabOrder(Qt::Key_Tab),
                ElementsAre("MP3", "AIFF", "WAV", "Bit depth", "Folder", "Add Audio",
                            "a.opus, in Album, Ready", "Save to /no-such-folder/Out",
                            "Show output folder", "Convert 3 Files"));
    EXPECT_THAT(tabOrder(Qt::Key_Backtab),
                ElementsAre("MP3", "Convert 3 Files", "Show output folder",
                            "Save to /no-such-folder/Out", "a.opus, in Album, Ready", "Add Audio",
                            "Folder", "Bit depth", "WAV", "AIFF"));
}

TEST_F(KeyboardTest, pressesEveryButtonBySpaceAndByEnter) {
    scenario_.chooseDestination("/no-such-folder/Out");
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        scenario_.panel->shown.clear();
        for (const char* text : {"Folder", "Add Audio", "Choose Audio", "Choose Folder"}) {
            focus(findButton<Button>(view_, text));
            press(key);
        }
        focus(find<Button>(view_, "destinationButton"));
        press(key);
        EXPECT_THAT(scenario_.panelTitles(),
                    ElementsAre("Choose a folder of Opus audio", "Choose Opus audio to convert",
                                "Choose Opus audio to convert", "Choose a folder of Opus audio",
                                "Choose output folder"));
        focus(find<Button>(view_, "revealButton"));
        press(key);
        EXPECT_EQ(scenario_.viewer->revealed.size(), 1U);
        scenario_.viewer->revealed.clear();
    }
}

TEST_F(KeyboardTest, choosesAFormatByEnter) {
    focus(findButton<FormatButton>(view_, "WAV"));
    press(Qt::Key_Return);
    EXPECT_EQ(scenario_.model->settings().format, OutputFormat::wav);
    EXPECT_EQ(focusName(), "WAV");
}

TEST_F(KeyboardTest, movesTheQualityByOneAndByTen) {
    focus(view_.findChild<QualitySlider*>());
    press(Qt::Key_Right);
    EXPECT_EQ(scenario_.model->settings().quality, 83);
    press(Qt::Key_Left);
    press(Qt::Key_Down);
    EXPECT_EQ(scenario_.model->settings().quality, 81);
    press(Qt::Key_PageDown);
    EXPECT_EQ(scenario_.model->settings().quality, 71);
    press(Qt::Key_Home);
    EXPECT_EQ(scenario_.model->settings().quality, 30);
    press(Qt::Key_End);
    EXPECT_EQ(scenario_.model->settings().quality, 100);
}

TEST_F(KeyboardTest, picksTheBitDepthByArrowsAndFromItsList) {
    ConversionSettings settings;
    settings.format = OutputFormat::wav;
    scenario_.model->setSettings(settings);
    settle();
    auto* picker = view_.findChild<PopUpButton*>();
    focus(picker);
    press(Qt::Key_Up);
    EXPECT_EQ(scenario_.model->settings().bitDepth, PCMBitDepth::sixteen);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        focus(picker);
        press(key);
        ASSERT_TRUE(test::runUntil([picker] { return picker->view()->isVisible(); }));
        QTest::keyClick(picker->view(), Qt::Key_Escape);
        ASSERT_TRUE(test::runUntil([picker] { return !picker->view()->isVisible(); }));
    }
    press(Qt::Key_Down);
    EXPECT_EQ(scenario_.model->settings().bitDepth, PCMBitDepth::twentyFour);
}

TEST_F(KeyboardTest, startsAndCancelsABatch) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    focus(find<Button>(view_, "startButton"));
    press(Qt::Key_Return);
    ASSERT_TRUE(scenario_.model->isConverting());
    EXPECT_EQ(focusName(), "Cancel");
    press(Qt::Key_Return);
    EXPECT_EQ(scenario_.runner->interrupts(), 1);
}

TEST_F(KeyboardTest, givesTheFocusBackAfterTheAlert) {
    ASSERT_NO_FATAL_FAILURE(raiseAlert());
    dismissAlert();
    EXPECT_TRUE(test::runUntil([] { return focusName() == "Convert 1 File"; }));
}

TEST_F(KeyboardTest, givesTheFocusBackAfterTheAlertUnderASlowWindowManager) {
    {
        const test::SlowWindowManager slow;
        ASSERT_NO_FATAL_FAILURE(raiseAlert());
        slow.bringBackRequestFor(*view_.findChild<Alert*>());
        dismissAlert();
    }
    EXPECT_TRUE(test::runUntil([] { return focusName() == "Convert 1 File"; }));
}

TEST_F(KeyboardTest, drawsTheFocusRingOfEveryControl) {
    scenario_.chooseDestination("/no-such-folder/Out");
    std::vector<QWidget*> controls;
    for (QWidget* widget : view_.findChildren<QWidget*>()) {
        const bool takesFocus = (widget->focusPolicy() & Qt::TabFocus) != 0;
        if (takesFocus && widget->isVisible() && widget->isEnabled()) {
            controls.push_back(widget);
        }
    }
    ASSERT_GE(controls.size(), 9U);
    press(Qt::Key_Tab);
    for (QWidget* control : controls) {
        view_.setFocus();
        settle();
        const QImage before = control->grab().toImage();
        focus(control);
        settle();
        EXPECT_NE(control->grab().toImage(), before) << control->metaObject()->className();
    }
}

TEST_F(KeyboardTest, showsNoFocusRingForMouseFocus) {
    auto* slider = view_.findChild<QualitySlider*>();
    press(Qt::Key_Tab);
    QTest::mouseClick(slider, Qt::LeftButton);
    EXPECT_TRUE(slider->hasFocus());
    EXPECT_FALSE(KeyboardFocus::isShownOn(*slider));
    press(Qt::Key_Right);
    EXPECT_TRUE(KeyboardFocus::isShownOn(*slider));
}

TEST_F(KeyboardTest, keepsTheFocusWhenAButtonIsClicked) {
    auto* slider = view_.findChild<QualitySlider*>();
    focus(slider);
    QTest::mouseClick(findButton<Button>(view_, "Add Audio"), Qt::LeftButton);
    settle();
    EXPECT_TRUE(slider->hasFocus());
}

} // namespace
} // namespace kestrel
