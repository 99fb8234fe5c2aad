#include "ProgressBar.h"

#include <QHBoxLayout>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

TEST(ProgressBarTest, isEmptyAtFirstAndWithoutText) {
    const ProgressBar bar;
    EXPECT_EQ(bar.value(), 0);
    EXPECT_EQ(bar.minimum(), 0);
    EXPECT_EQ(bar.maximum(), 1000);
    EXPECT_FALSE(bar.isTextVisible());
}

TEST(ProgressBarTest, takesTheWidthThereIsButNoMoreThanItsHeight) {
    QWidget window;
    QHBoxLayout row(&window);
    row.setContentsMargins(0, 0, 0, 0);
    row.setSpacing(0);
    ProgressBar bar(&window);
    QWidget other(&window);
    row.addWidget(&bar);
    row.addWidget(&other);
    EXPECT_EQ(row.sizeHint(), QSize(160, 6));
    EXPECT_EQ(row.minimumSize(), QSize(40, 6));
    row.setGeometry(QRect(0, 0, 500, 60));
    EXPECT_EQ(bar.size(), QSize(500, 6));
}

} // namespace
} // namespace kestrel
