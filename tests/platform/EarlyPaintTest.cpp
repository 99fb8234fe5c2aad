#include "EarlyPaint.h"

#include "RunUntil.h"

#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class PaintedWidget : public QWidget {
  public:
    PaintedWidget() { resize(200, 100); }

    int paintCount() const { return paintCount_; }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++paintCount_; }

  private:
    int paintCount_ = 0;
};

TEST(EarlyPaintTest, paintsAWindowOnceBeforeItIsExposed) {
    PaintedWidget window;
    window.show();
    QCoreApplication::sendPostedEvents();
    ASSERT_FALSE(window.windowHandle()->isExposed());
    EXPECT_EQ(window.paintCount(), 0);
    paintBeforeExposure(window);
    EXPECT_EQ(window.paintCount(), 1);
    ASSERT_TRUE(test::runUntil([&] { return window.windowHandle()->isExposed(); }));
    paintBeforeExposure(window);
    EXPECT_EQ(window.paintCount(), 1);
}

TEST(EarlyPaintTest, leavesAHiddenWindowAlone) {
    PaintedWidget window;
    window.winId();
    paintBeforeExposure(window);
    EXPECT_EQ(window.paintCount(), 0);
    EXPECT_FALSE(window.testAttribute(Qt::WA_Mapped));
}

} // namespace
} // namespace kestrel
