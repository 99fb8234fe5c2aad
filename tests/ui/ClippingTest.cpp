#include "Button.h"
#include "ContentView.h"
#include "ElidedLabel.h"
#include "FFmpegError.h"
#include "FormatButton.h"
#include "Label.h"
#include "PopUpButton.h"
#include "Scenario.h"

#include <QApplication>
#include <QLayout>

#include <gtest/gtest.h>

#include <tuple>

namespace kestrel {
namespace {

enum class Contents { empty, jobs, uncompressed };

/// A window of the smallest size, by font size in percent, direction, palette and contents.
using Situation = std::tuple<int, Qt::LayoutDirection, bool, Contents>;

class ClippingTest : public ::testing::TestWithParam<Situation> {
  protected:
    void SetUp() override {
        const auto [percent, direction, isHighContrast, contents] = GetParam();
        QFont font = usualFont_;
        font.setPointSizeF(usualFont_.pointSizeF() * percent / 100);
        QApplication::setFont(font);
        QApplication::setLayoutDirection(direction);
        if (isHighContrast) {
            QApplication::setPalette(QPalette(QColor(Qt::yellow), QColor(Qt::black)));
        }
        view_ = std::make_unique<ContentView>(scenario_.model, [] { return std::nullopt; });
        fill(contents);
        view_->resize(960, 640 - 28);
        view_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view_.get()));
        settle();
        settle();
    }

    void TearDown() override {
        view_.reset();
        QApplication::setFont(usualFont_);
        QApplication::setPalette(usualPalette_);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void fill(Contents contents) {
        if (contents == Contents::empty) {
            return;
        }
        if (contents == Contents::uncompressed) {
            scenario_.model->setSettings({.format = OutputFormat::aiff});
        }
        scenario_.runner->setScript("b.opus", [](const auto&, const auto&) {
            throw FFmpegError::processFailed("one\ntwo\nthree");
        });
        scenario_.holdBack("c.opus", 0.5);
        scenario_.add({"a.opus", "b.opus", "c.opus", "d.opus"});
        scenario_.start();
        static_cast<void>(
            QTest::qWaitFor([this] { return scenario_.model->jobs()[2].progress > 0; }));
    }

    static std::string describe(const QWidget* widget) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        return std::string(widget->metaObject()->className()) + " " + utf8(widget->objectName()) +
               " \"" +
               utf8(label != nullptr    ? label->text()
                    : button != nullptr ? button->text()
                                        : QString()) +
               "\"";
    }

    /// Whether everything of a label's text is inside its rectangle, or left out with an ellipsis.
    static bool hasRoomForText(const Label& label) {
        if (qobject_cast<const ElidedLabel*>(&label) != nullptr) {
            return label.height() >= QFontMetricsF(label.font()).height() &&
                   label.width() >= label.minimumSizeHint().width();
        }
        return label.width() >= label.minimumSizeHint().width() &&
               label.height() >= label.heightForWidth(label.width());
    }

    static bool hasRoomForText(const QWidget& control) {
        const QSize needed = control.minimumSizeHint();
        return control.width() >= needed.width() && control.height() >= needed.height();
    }

    template <typename Widget> void expectRoomForTexts() const {
        for (const Widget* widget : view_->findChildren<Widget*>()) {
            if (widget->isVisible() && !widget->visibleRegion().isEmpty()) {
                EXPECT_TRUE(hasRoomForText(*widget))
                    << describe(widget) << " has " << widget->width() << "x" << widget->height();
            }
        }
    }

    static bool isShown(const QWidget* widget) {
        return widget->isVisible() && !widget->isWindow() && widget->width() > 1 &&
               widget->height() > 1;
    }

    void expectNoOverlap(const QWidget* parent) const {
        const QList<QWidget*> children = parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        for (const QWidget* a : children) {
            if (!isShown(a)) {
                continue;
            }
            EXPECT_TRUE(parent->rect().contains(a->geometry()) ||
                        parent->objectName() == QStringLiteral("qt_scrollarea_viewport") ||
                        a->inherits("kestrel::JobRow"))
                << describe(a) << " reaches out of " << describe(parent);
            for (const QWidget* b : children) {
                if (a != b && isShown(b)) {
                    EXPECT_FALSE(a->geometry().intersects(b->geometry()))
                        << describe(a) << " lies over " << describe(b);
                }
            }
            expectNoOverlap(a);
        }
    }

    const QFont usualFont_ = QApplication::font();
    const QPalette usualPalette_ = QApplication::palette();
    Scenario scenario_;
    std::unique_ptr<ContentView> view_;
};

TEST_P(ClippingTest, fitsIntoTheSmallestWindow) {
    EXPECT_EQ(view_->size(), QSize(960, 640 - 28));
}

TEST_P(ClippingTest, cutsNoTextOff) {
    expectRoomForTexts<Label>();
    expectRoomForTexts<Button>();
    expectRoomForTexts<PopUpButton>();
}

TEST_P(ClippingTest, laysNothingOverSomethingElse) {
    expectNoOverlap(view_.get());
}

std::string nameOf(const ::testing::TestParamInfo<Situation>& info) {
    const auto [percent, direction, isHighContrast, contents] = info.param;
    const char* const names[] = {"Empty", "Jobs", "Uncompressed"};
    return std::to_string(percent) +
           (direction == Qt::LeftToRight ? "LeftToRight" : "RightToLeft") +
           (isHighContrast ? "HighContrast" : "") + names[static_cast<int>(contents)];
}

INSTANTIATE_TEST_SUITE_P(Situations, ClippingTest,
                         ::testing::Combine(::testing::Values(100, 125, 150, 200),
                                            ::testing::Values(Qt::LeftToRight, Qt::RightToLeft),
                                            ::testing::Values(false),
                                            ::testing::Values(Contents::empty, Contents::jobs,
                                                              Contents::uncompressed)),
                         nameOf);

INSTANTIATE_TEST_SUITE_P(HighContrast, ClippingTest,
                         ::testing::Combine(::testing::Values(100, 200),
                                            ::testing::Values(Qt::LeftToRight),
                                            ::testing::Values(true),
                                            ::testing::Values(Contents::empty, Contents::jobs)),
                         nameOf);

} // namespace
} // namespace kestrel
