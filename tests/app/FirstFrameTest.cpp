#include "FirstFrame.h"
#include "EarlyPaint.h"
#include "RunUntil.h"

#include <QPointer>
#include <QWidget>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

/// Records the value of `done` at its last paint event.
class PaintedWidget : public QWidget {
  public:
    explicit PaintedWidget(const int& done) : done_(done) {}

    int paintCount() const { return paintCount_; }

    int doneAtPaint() const { return doneAtPaint_; }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        ++paintCount_;
        doneAtPaint_ = done_;
    }

  private:
    const int& done_;
    int paintCount_ = 0;
    int doneAtPaint_ = 0;
};

TEST(FirstFrameTest, callsBackOnceAfterTheFirstFrame) {
    int done = 0;
    PaintedWidget widget(done);
    const QPointer<FirstFrame> firstFrame = new FirstFrame(widget, [&done] { ++done; });
    QCoreApplication::processEvents();
    EXPECT_EQ(done, 0);
    widget.show();
    ASSERT_TRUE(test::runUntil([&] { return widget.paintCount() > 0; }));
    EXPECT_EQ(widget.doneAtPaint(), 0);
    // Twice in the same event-loop iteration, perhaps.
    widget.repaint();
    ASSERT_TRUE(test::runUntil([&] { return done > 0; }));
    widget.repaint();
    QCoreApplication::processEvents();
    EXPECT_GE(widget.paintCount(), 2);
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(test::runUntil([&] { return firstFrame == nullptr; }));
}

TEST(FirstFrameTest, waitsForAWindowThatIsPaintedBeforeItIsExposed) {
    int done = 0;
    PaintedWidget widget(done);
    new FirstFrame(widget, [&done] { ++done; });
    widget.show();
    QCoreApplication::sendPostedEvents();
    paintBeforeExposure(widget);
    ASSERT_EQ(widget.paintCount(), 1);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(done, 0);
    EXPECT_TRUE(test::runUntil([&] { return done > 0; }));
}

TEST(FirstFrameTest, doesNotCallBackForAWidgetThatWasNeverPainted) {
    int done = 0;
    {
        PaintedWidget widget(done);
        new FirstFrame(widget, [&done] { ++done; });
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(done, 0);
}

} // namespace
} // namespace kestrel
