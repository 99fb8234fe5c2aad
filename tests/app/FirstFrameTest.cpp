#include "FirstFrame.h"
#include "RunUntil.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

/// Keeps what was done when it was painted last.
class PaintedWidget : public QWidget {
  public:
    explicit PaintedWidget(const int& done) : done_(done) {}

    int paintings() const { return paintings_; }

    int doneBefore() const { return doneBefore_; }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        ++paintings_;
        doneBefore_ = done_;
    }

  private:
    const int& done_;
    int paintings_ = 0;
    int doneBefore_ = 0;
};

TEST(FirstFrameTest, isPaintedBeforeWhatCanWaitIsDoneOnce) {
    int done = 0;
    PaintedWidget widget(done);
    new FirstFrame(widget, [&done] { ++done; });
    QCoreApplication::processEvents();
    EXPECT_EQ(done, 0);
    widget.show();
    ASSERT_TRUE(test::runUntil([&] { return widget.paintings() > 0; }));
    EXPECT_EQ(widget.doneBefore(), 0);
    ASSERT_TRUE(test::runUntil([&] { return done > 0; }));
    widget.repaint();
    QCoreApplication::processEvents();
    EXPECT_GE(widget.paintings(), 2);
    EXPECT_EQ(done, 1);
}

TEST(FirstFrameTest, isForgottenWithAWidgetThatWasNeverPainted) {
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
