#include "DropZone.h"

#include "Badge.h"
#include "Button.h"
#include "ContinuousRectangle.h"
#include "Corners.h"
#include "Label.h"
#include "Scenario.h"
#include "ThemeColor.h"

#include <QImage>
#include <QPainter>
#include <QPen>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class DropZoneTest : public ::testing::Test {
  protected:
    DropZoneTest() : zone_(scenario_.model) {
        zone_.setPalette(QPalette(QColor(Qt::black), QColor(Qt::white)));
        zone_.resize(600, 460);
        EXPECT_TRUE(showActive(zone_));
    }

    Scenario scenario_;
    DropZone zone_;
};

TEST_F(DropZoneTest, keepsItsTextsClearOfTheOutline) {
    // The outline is 26 pixels from the sides.
    for (const char* name : {"dropTitle", "dropExplanation"}) {
        const QRect text = find<Label>(zone_, name)->geometry();
        EXPECT_EQ(text.x(), 26 + 24) << name;
        EXPECT_EQ(text.width(), 600 - 2 * (26 + 24)) << name;
    }
}

TEST_F(DropZoneTest, hasRoomForItsContentsInsideTheOutline) {
    const QSize least = zone_.minimumSizeHint();
    const auto height = [this](const char* name) {
        return find<Label>(zone_, name)->sizeHint().height();
    };
    const QSize button = findButton<Button>(zone_, "Choose Audio")->sizeHint();
    EXPECT_EQ(least.height(), 20 + 112 + 20 + height("dropTitle") + 10 + height("dropExplanation") +
                                  20 + button.height() + 20);
    EXPECT_EQ(zone_.findChild<Badge*>()->size(), QSize(112, 112));
    const int buttons =
        button.width() + 8 + findButton<Button>(zone_, "Choose Folder")->sizeHint().width();
    EXPECT_GE(least.width(), 2 * (26 + 24) + buttons);
}

TEST_F(DropZoneTest, outlinesAContinuousRectangleInDashesOfSevenPixels) {
    for (const bool isTargeted : {false, true}) {
        scenario_.model->setIsDropTargeted(isTargeted);
        zone_.refresh();
        const double width = isTargeted ? 2 : 1;
        const ThemeColor color = isTargeted
                                     ? ThemeColor(ThemeColor::Name::purple)
                                     : ThemeColor(ThemeColor::Name::secondary).withOpacity(0.2);
        const QImage expected = paintedOn(Qt::white, zone_.size(), [&](QPainter& painter) {
            QPen pen(color.color(zone_.palette()), width, Qt::CustomDashLine, Qt::FlatCap);
            pen.setDashPattern({7 / width, 7 / width});
            painter.setPen(pen);
            const double inset = width / 2;
            const QRectF outline = QRectF(zone_.rect()).adjusted(26, 20, -26, -20);
            painter.drawPath(
                continuousRectangle(outline.adjusted(inset, inset, -inset, -inset), 18));
        });
        EXPECT_TRUE(haveEqualCorners(zone_.grab().toImage(), expected, 70)) << isTargeted;
    }
}

} // namespace
} // namespace kestrel
