#include "Alert.h"
#include "Button.h"
#include "ContentView.h"
#include "DesktopPalettes.h"
#include "ExpectContrast.h"
#include "JobRow.h"
#include "PaintRecorder.h"
#include "PopUpButton.h"
#include "QualitySlider.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QScrollBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace kestrel {
namespace {

TEST(ContrastRatioTest, isThatOfTheGuidelines) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(contrast(Qt::white, Qt::white), 1, 0.001);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.005);
    EXPECT_NEAR(contrast(Qt::red, Qt::white), 4.00, 0.005);
}

/// Checks the contrast of what the contents of the window paint, in each palette.
class ContrastTest : public ::testing::TestWithParam<DesktopPalette> {
  protected:
    void SetUp() override {
        QApplication::setPalette(GetParam().palette);
        view_ = std::make_unique<ContentView>(scenario_.model, [this] {
            return hasFFmpeg_ ? std::optional(FileURL("/usr/bin/ffmpeg")) : std::nullopt;
        });
        view_->resize(960, 640);
        ASSERT_TRUE(showActive(*view_));
        QTest::mouseMove(view_.get(), QPoint(315, 5));
        // Hides the focus ring that keys of an earlier test have left.
        QTest::mouseClick(view_.get(), Qt::LeftButton, {}, QPoint(315, 5));
        settle();
    }

    void TearDown() override {
        view_.reset();
        QApplication::setPalette(originalPalette_);
    }

    static std::vector<Painted> check(QWidget& widget, const std::string& state) {
        return expectContrast(widget, GetParam().textContrast, state);
    }

    static std::vector<std::string> checkStates(QWidget& widget) {
        return expectContrastInEachState(widget, GetParam().textContrast);
    }

    static bool takesFocus(const QWidget& widget) {
        const bool isControl = qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
                               qobject_cast<const QSlider*>(&widget) != nullptr ||
                               qobject_cast<const QComboBox*>(&widget) != nullptr ||
                               qobject_cast<const JobRow*>(&widget) != nullptr;
        return isControl && widget.isVisible() && widget.isEnabled();
    }

    /// Gives the focus to one control after the other; returns how many there are.
    static int checkFocusRings(const QWidget& window) {
        int count = 0;
        for (QWidget* control : window.findChildren<QWidget*>()) {
            if (takesFocus(*control)) {
                expectFocusRing(*control);
                ++count;
            }
        }
        return count;
    }

    /// How many things of a kind were painted by widgets of a type, and checked.
    template <typename Widget> long count(Painted::Kind kind) const {
        const std::vector<Painted> checked = check(*view_, "counted");
        return std::count_if(checked.begin(), checked.end(), [&](const Painted& painted) {
            return painted.kind == kind &&
                   qobject_cast<Widget*>(view_->childAt(painted.place.center())) != nullptr;
        });
    }

    void showAllStates() {
        scenario_.failWith("b.opus", "no such stream\nnor such a file");
        scenario_.failWith("c.opus", "no such stream");
        scenario_.cancelAt("d.opus");
        scenario_.add({"a.opus", "b.opus", "c.opus", "d.opus"});
        ASSERT_TRUE(scenario_.convertAll());
        scenario_.add({"e.opus"});
        scenario_.holdBack("c.opus", 0.5);
        scenario_.start();
        ASSERT_TRUE(scenario_.waitForProgress(2));
        settle();
    }

    Scenario scenario_;
    bool hasFFmpeg_ = true;
    std::unique_ptr<ContentView> view_;

  private:
    const QPalette originalPalette_ = QApplication::palette();
};

using ::testing::Contains;
using ::testing::IsSupersetOf;

TEST_P(ContrastTest, isEnoughInTheSidebarAndTheDropZone) {
    EXPECT_THAT(checkStates(*view_), IsSupersetOf({"Kestrel",
                                                   "Opus, made universal",
                                                   "OUTPUT FORMAT",
                                                   "QUALITY",
                                                   "PCM OPTIONS",
                                                   "MP3",
                                                   "AIFF",
                                                   "WAV",
                                                   "82%",
                                                   "Higher quality creates larger MP3 files.",
                                                   "FFmpeg ready",
                                                   "Conversion Queue",
                                                   "Add OPUS, OGG, or OGA files",
                                                   "Folder",
                                                   "Add Audio",
                                                   "Drop Opus audio or folders here",
                                                   "Queue a single track or an entire folder tree.",
                                                   "Choose Audio",
                                                   "Choose Folder",
                                                   "Save to",
                                                   "Choose destination…"}));
    // The filled part of the track, and the thumb.
    EXPECT_EQ(count<QualitySlider>(Painted::Kind::area), 2);
    EXPECT_EQ(count<StatusDot>(Painted::Kind::area), 1);
    EXPECT_EQ(count<AppBadge>(Painted::Kind::symbol), 1);
    // Three formats, and the check mark.
    EXPECT_EQ(count<Button>(Painted::Kind::symbol), 4 + 3);
}

TEST_P(ContrastTest, isEnoughWhileFilesAreDraggedOverTheDropZone) {
    EXPECT_EQ(count<QWidget>(Painted::Kind::line), 0);
    scenario_.model->setIsDropTargeted(true);
    settle();
    checkStates(*view_);
    EXPECT_EQ(count<QWidget>(Painted::Kind::line), 1) << "the outline";
}

TEST_P(ContrastTest, isEnoughInRowsOfEachState) {
    ASSERT_NO_FATAL_FAILURE(showAllStates());
    EXPECT_THAT(checkStates(*view_),
                IsSupersetOf({"b.opus", "Album", "•", "Ready", "Converting", "Complete",
                              "Cancelled", "Failed", "no such stream", "nor such a file", "Cancel",
                              "Save to", "/no-such-folder/Out"}));
    EXPECT_EQ(count<QProgressBar>(Painted::Kind::area), 2);
}

TEST_P(ContrastTest, isEnoughBeforeTheStart) {
    scenario_.add({"a.opus", "b.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    EXPECT_THAT(checkStates(*view_), Contains("Convert 2 Files"));
}

TEST_P(ContrastTest, isEnoughForTheMissingFFmpegAndTheBitDepth) {
    hasFFmpeg_ = false;
    scenario_.model->setSettings({.format = OutputFormat::aiff});
    settle();
    EXPECT_THAT(checkStates(*view_),
                IsSupersetOf({"FFmpeg required", "Bit depth", "24-bit",
                              "AIFF and WAV preserve uncompressed PCM audio."}));
    EXPECT_EQ(count<StatusDot>(Painted::Kind::area), 1);
    EXPECT_EQ(count<PopUpButton>(Painted::Kind::line), 2) << "the chevrons";
}

TEST_P(ContrastTest, isEnoughForTheHandleOfTheScrollBar) {
    scenario_.addMany(100);
    checkStates(*view_);
    EXPECT_EQ(count<QScrollBar>(Painted::Kind::area), 1);
}

TEST_P(ContrastTest, isEnoughForThePressedSlider) {
    auto* slider = view_->findChild<QualitySlider*>();
    QTest::mousePress(slider, Qt::LeftButton, {}, QPoint(60, slider->height() / 2));
    check(*view_, "pressed");
    EXPECT_EQ(count<QualitySlider>(Painted::Kind::area), 2);
    QTest::mouseRelease(slider, Qt::LeftButton);
}

TEST_P(ContrastTest, isEnoughForFocusRings) {
    // The buttons of the drop zone, three formats, slider, "Folder", "Add Audio" and "Save to".
    EXPECT_EQ(checkFocusRings(*view_), 2 + 3 + 1 + 3);
    scenario_.model->setSettings({.format = OutputFormat::aiff});
    scenario_.add({"a.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    // The picker, a row with its button, the reveal button and "Convert".
    EXPECT_EQ(checkFocusRings(*view_), 3 + 1 + 3 + 2 + 2);
}

TEST_P(ContrastTest, isEnoughInTheAlert) {
    scenario_.model->setAlertMessage(FFmpegError::notFound().errorDescription());
    settle();
    auto* alert = view_->findChild<Alert*>();
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(waitUntilShown(*alert));
    EXPECT_THAT(checkStates(*alert), IsSupersetOf({"Kestrel", "OK"}));
    EXPECT_EQ(checkFocusRings(*alert), 1);
    alert->close();
    settle();
}

TEST_P(ContrastTest, isEnoughInThePopUpList) {
    scenario_.model->setSettings({.format = OutputFormat::aiff});
    settle();
    auto* picker = view_->findChild<PopUpButton*>();
    picker->showPopup();
    QWidget* list = QApplication::activePopupWidget();
    ASSERT_NE(list, nullptr);
    for (int row = 0; row < picker->count(); ++row) {
        picker->view()->setCurrentIndex(picker->model()->index(row, 0));
        EXPECT_THAT(textsOf(check(*list, "item " + std::to_string(row))),
                    IsSupersetOf({"16-bit", "24-bit"}));
    }
    picker->hidePopup();
}

INSTANTIATE_TEST_SUITE_P(Palettes, ContrastTest, ::testing::ValuesIn(desktopPalettes()),
                         paletteName<::testing::TestParamInfo<DesktopPalette>>);

} // namespace
} // namespace kestrel
