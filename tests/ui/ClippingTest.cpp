#include "ContentView.h"
#include "RoomForTexts.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <optional>
#include <tuple>

namespace kestrel {
namespace {

enum class Contents { empty, jobs, uncompressed };

/// Font size in percent, layout direction, high contrast, contents; all in the smallest window.
using Configuration = std::tuple<int, Qt::LayoutDirection, bool, Contents>;

class ClippingTest : public ::testing::TestWithParam<Configuration> {
  protected:
    void SetUp() override {
        const auto [percent, direction, isHighContrast, contents] = GetParam();
        QFont font = originalFont_;
        font.setPointSizeF(originalFont_.pointSizeF() * percent / 100);
        QApplication::setFont(font);
        QApplication::setLayoutDirection(direction);
        if (isHighContrast) {
            QApplication::setPalette(QPalette(QColor(Qt::yellow), QColor(Qt::black)));
        }
        view_ = std::make_unique<ContentView>(scenario_.model, [] { return std::nullopt; });
        fill(contents);
        view_->resize(960, 640 - 28);
        view_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view_.get(), test::timeout));
        settle();
        settle();
    }

    void TearDown() override {
        view_.reset();
        QApplication::setFont(originalFont_);
        QApplication::setPalette(originalPalette_);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void fill(Contents contents) {
        if (contents == Contents::empty) {
            return;
        }
        if (contents == Contents::uncompressed) {
            scenario_.model->setSettings({.format = OutputFormat::aiff});
        }
        scenario_.failWith("b.opus", "one\ntwo\nthree");
        scenario_.holdBack("c.opus", 0.5);
        scenario_.add({"a.opus", "b.opus", "c.opus", "d.opus"});
        scenario_.start();
        static_cast<void>(scenario_.waitForProgress(2));
    }

    const QFont originalFont_ = QApplication::font();
    const QPalette originalPalette_ = QApplication::palette();
    Scenario scenario_;
    std::unique_ptr<ContentView> view_;
};

TEST_P(ClippingTest, fitsIntoTheSmallestWindow) {
    EXPECT_EQ(view_->size(), QSize(960, 640 - 28));
}

TEST_P(ClippingTest, clipsNoText) {
    expectRoomForTexts(*view_);
}

TEST_P(ClippingTest, overlapsNoWidgets) {
    expectNoOverlap(view_.get());
}

std::string configurationName(const ::testing::TestParamInfo<Configuration>& info) {
    const auto [percent, direction, isHighContrast, contents] = info.param;
    const char* const names[] = {"Empty", "Jobs", "Uncompressed"};
    return std::to_string(percent) +
           (direction == Qt::LeftToRight ? "LeftToRight" : "RightToLeft") +
           (isHighContrast ? "HighContrast" : "") + names[static_cast<int>(contents)];
}

INSTANTIATE_TEST_SUITE_P(Configurations, ClippingTest,
                         ::testing::Combine(::testing::Values(100, 125, 150, 200),
                                            ::testing::Values(Qt::LeftToRight, Qt::RightToLeft),
                                            ::testing::Values(false),
                                            ::testing::Values(Contents::empty, Contents::jobs,
                                                              Contents::uncompressed)),
                         configurationName);

INSTANTIATE_TEST_SUITE_P(HighContrast, ClippingTest,
                         ::testing::Combine(::testing::Values(100, 200),
                                            ::testing::Values(Qt::LeftToRight),
                                            ::testing::Values(true),
                                            ::testing::Values(Contents::empty, Contents::jobs)),
                         configurationName);

} // namespace
} // namespace kestrel
