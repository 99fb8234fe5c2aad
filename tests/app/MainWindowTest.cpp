#include "MainWindow.h"
#include "SettingsSidebar.h"

#include "ContentScroller.h"
#include "ContentView.h"
#include "FormatButton.h"
#include "MainWindowFixture.h"
#include "PaintedFromFile.h"
#include "QueueView.h"
#include "RunUntil.h"
#include "ThemeColor.h"
#include "WindowBorder.h"

#include <QAccessible>
#include <QImage>
#include <QLabel>
#include <QWindow>

#include <gmock/gmock.h>

#include <algorithm>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

class MainWindowTest : public MainWindowFixture {
  public:
    MainWindowTest(const MainWindowTest&) = delete;
    MainWindowTest& operator=(const MainWindowTest&) = delete;

  protected:
    MainWindowTest() = default;

    ~MainWindowTest() override { QApplication::setFont(font_); }

    ContentView& contents() { return *window_.findChild<ContentView*>(); }

    /// Makes the window system set this size, as if there were no minimum.
    void force(QSize size, bool isFinal) {
        QWindow& handle = *window_.windowHandle();
        handle.setMinimumSize({1, 1});
        handle.setMaximumSize(isFinal ? size : QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        handle.resize(size);
    }

    bool waitForSize(QSize size) {
        const bool isReached = test::runUntil([this, size] { return window_.size() == size; });
        settle();
        return isReached;
    }

    QColor pixel(QPoint place) { return window_.grab().toImage().pixelColor(place); }

    const QFont font_ = QApplication::font();
};

TEST_F(MainWindowTest, isFramelessWithAllWindowSystemHints) {
    EXPECT_TRUE(window_.windowFlags().testFlag(Qt::FramelessWindowHint));
    for (const Qt::WindowType hint : {Qt::WindowSystemMenuHint, Qt::WindowMinimizeButtonHint,
                                      Qt::WindowMaximizeButtonHint, Qt::WindowCloseButtonHint}) {
        EXPECT_TRUE(window_.windowFlags().testFlag(hint));
    }
    EXPECT_EQ(window_.frameGeometry(), window_.geometry());
}

TEST_F(MainWindowTest, laysItsContentsBelowTheTitleBarAndTheSidebarUnderIt) {
    EXPECT_EQ(contents().geometry(), window_.rect());
    EXPECT_EQ(titleBar().geometry(), QRect(0, 0, window_.width(), 28));
    EXPECT_EQ(window_.findChild<SettingsSidebar*>()->geometry(),
              QRect(0, 0, 310, window_.height()));
    EXPECT_EQ(window_.findChild<QueueView*>()->mapTo(&window_, QPoint()).y(), 28);
    for (QLabel* label : window_.findChildren<QLabel*>()) {
        EXPECT_GE(label->mapTo(&window_, QPoint()).y(), 28) << utf8(label->text());
    }
    // The sidebar's dark background is visible in the title bar.
    EXPECT_LT(pixel({200, 14}).lightness(), 50);
}

TEST_F(MainWindowTest, requestsItsMinimumSizeWhenItIsMadeSmaller) {
    force({500, 400}, false);
    ASSERT_TRUE(test::runUntil([this] { return !window_.sizes.empty(); }));
    EXPECT_TRUE(waitForSize({960, 640}));
    EXPECT_THAT(window_.sizes, ElementsAre(QSize(960, 640)));
    // And again, once a request was granted.
    force({500, 400}, false);
    ASSERT_TRUE(test::runUntil([this] { return window_.sizes.size() == 2; }));
    EXPECT_TRUE(waitForSize({960, 640}));
    // The window system handles one size at a time.
    EXPECT_FALSE(window_.hasRequestedDuringResize);
}

TEST_F(MainWindowTest, requestsItsMinimumSizeOnceForEachRefusal) {
    window_.forwardsSizes = false;
    for (const QSize size : {QSize(500, 400), QSize(600, 500), QSize(500, 700)}) {
        force(size, false);
        ASSERT_TRUE(waitForSize(size));
        // A second resize event, as from a window manager that reports what it refuses.
        QResizeEvent again(size, size);
        QApplication::sendEvent(&window_, &again);
        settle();
    }
    EXPECT_THAT(window_.sizes, ElementsAre(QSize(960, 640), QSize(960, 640), QSize(960, 700)));
}

TEST_F(MainWindowTest, doesNotEnforceItsMinimumSizeWhileMaximised) {
    maximise();
    QResizeEvent small({500, 400}, window_.size());
    window_.setMinimumSize(window_.size() + QSize(100, 100));
    window_.sizes.clear();
    QApplication::sendEvent(&window_, &small);
    settle();
    EXPECT_THAT(window_.sizes, ElementsAre());
}

TEST_F(MainWindowTest, adaptsItsMinimumSizeToTheFont) {
    QFont large = font_;
    large.setPixelSize(30);
    QApplication::setFont(large);
    ASSERT_TRUE(test::runUntil([this] { return window_.minimumWidth() > 960; }));
    EXPECT_EQ(window_.minimumSize(), QSize(960, 640).expandedTo(contents().minimumSizeHint()));
    EXPECT_GE(window_.width(), window_.minimumWidth());
    QApplication::setFont(font_);
    ASSERT_TRUE(test::runUntil([this] { return window_.minimumSize() == QSize(960, 640); }));
}

TEST_F(MainWindowTest, drawsABorderUnlessMaximised) {
    const QImage free = window_.grab().toImage();
    const int right = free.width() - 1;
    const int bottom = free.height() - 1;
    const QColor background = window_.palette().color(QPalette::Window);
    EXPECT_EQ(free.pixelColor(right - 1, 300), background);
    for (const QPoint place : {QPoint(right, 300), QPoint(600, 0), QPoint(600, bottom)}) {
        const int expected =
            qRound(background.red() * 0.8 + window_.palette().windowText().color().red() * 0.2);
        EXPECT_NEAR(free.pixelColor(place).red(), expected, 2);
    }
    EXPECT_NE(free.pixelColor(0, 300), free.pixelColor(1, 300));
    EXPECT_TRUE(
        window_.findChild<WindowBorder*>()->testAttribute(Qt::WA_TransparentForMouseEvents));

    maximise();
    const QImage maximised = window_.grab().toImage();
    EXPECT_EQ(maximised.pixelColor(maximised.width() - 1, 300), background);
    EXPECT_EQ(maximised.pixelColor(600, 0), background);
    window_.showNormal();
    ASSERT_TRUE(waitForMaximised(false));
    EXPECT_NE(pixel({window_.width() - 1, 300}), background);
}

TEST_F(MainWindowTest, putsTheCaptionButtonsLastInTheTabOrder) {
    // Rows that are created later still come before them.
    scenario_.add({"a.opus", "b.opus"});
    closeButton().setFocus();
    std::vector<QWidget*> visited;
    do {
        QTest::keyClick(&window_, Qt::Key_Tab);
        visited.push_back(QApplication::focusWidget());
    } while (visited.back() != &closeButton() && visited.size() < 50);
    ASSERT_GT(visited.size(), 5U);
    EXPECT_NE(qobject_cast<FormatButton*>(visited.front()), nullptr);
    EXPECT_THAT(std::vector<QWidget*>(visited.end() - 3, visited.end()),
                ElementsAre(&minimiseButton(), &maximiseButton(), &closeButton()));
    EXPECT_EQ(std::count(visited.begin(), visited.end(), &minimiseButton()), 1);
    QTest::keyClick(&window_, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &maximiseButton());
}

TEST_F(MainWindowTest, setsItsIconInAllSizesAfterTheFirstFrame) {
    ASSERT_TRUE(test::runUntil([this] { return !window_.windowIcon().isNull(); }));
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        const QImage image = window_.windowIcon().pixmap(QSize(side, side), 1.0).toImage();
        EXPECT_GT(image.pixelColor(side / 2, side / 4).alpha(), 200);
        EXPECT_EQ(image.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                  paintedFromFile(QStringLiteral(ICONS "/org.kestrel.Converter.svg"), side));
    }
    const RecordingWindow hidden(scenario_.model);
    settle();
    EXPECT_TRUE(hidden.windowIcon().isNull());
}

TEST_F(MainWindowTest, isAWindowToAssistiveTechnology) {
    window_.setWindowTitle(QStringLiteral("Title"));
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&window_);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Window);
    EXPECT_EQ(utf8(accessible->text(QAccessible::Name)), "Title");
    EXPECT_TRUE(accessible->state().active);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&contents())->role(), QAccessible::Client);
    ASSERT_EQ(accessible->childCount(), 2);
    EXPECT_EQ(accessible->child(0)->object(), window_.findChild<ContentScroller*>());
    EXPECT_EQ(accessible->child(0)->child(0)->child(0)->object(), &contents());
    EXPECT_EQ(accessible->child(1)->object(), &titleBar());
    EXPECT_EQ(accessible->child(2), nullptr);
    EXPECT_EQ(accessible->indexOfChild(accessible->child(1)), 1);
}

TEST_F(MainWindowTest, mirrorsWithTheLayoutDirection) {
    QApplication::setLayoutDirection(Qt::RightToLeft);
    settle();
    EXPECT_EQ(closeButton().geometry(), QRect(0, 0, 36, 28));
    EXPECT_EQ(minimiseButton().geometry(), QRect(72, 0, 36, 28));
    const auto* sidebar = window_.findChild<SettingsSidebar*>();
    EXPECT_EQ(sidebar->geometry().right(), window_.width() - 1);
    EXPECT_GE(titleBar().menuBar().geometry().left(), sidebar->geometry().left());
    EXPECT_LT(window_.width() - titleBar().menuBar().geometry().right(), 30);
}

} // namespace
} // namespace kestrel
