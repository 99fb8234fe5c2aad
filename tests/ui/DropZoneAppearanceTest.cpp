#include "AppearanceFixture.h"
#include "DropZone.h"
#include "MixedColor.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace kestrel {
namespace {

class DropZoneAppearanceTest : public AppearanceFixture {
  protected:
    DropZone* zone() const { return view_.findChild<DropZone*>(); }

    /// The colours of the drop zone's outline down its left side, `column` pixels from the edge.
    std::vector<QColor> outline(int column) {
        const QImage picture = image(zone());
        std::vector<QColor> colors;
        for (int y = 60; y < picture.height() - 60; ++y) {
            colors.push_back(picture.pixelColor(column, y));
        }
        return colors;
    }

    /// The strongest colour of the outline in that column.
    QColor outlineColor(int column) {
        QColor strongest = windowColor();
        for (const QColor& color : outline(column)) {
            if (std::abs(color.green() - windowColor().green()) >
                std::abs(strongest.green() - windowColor().green())) {
                strongest = color;
            }
        }
        return strongest;
    }

    /// The lengths of the dashes and gaps, in pixels, without the cut ones at both ends.
    std::vector<int> dashes(int column) {
        const QColor dashColor = outlineColor(column);
        std::vector<int> runs;
        bool wasDash = false;
        for (const QColor& color : outline(column)) {
            const bool isDash = std::abs(color.green() - dashColor.green()) <
                                std::abs(color.green() - windowColor().green());
            if (isDash != wasDash || runs.empty()) {
                runs.push_back(0);
            }
            ++runs.back();
            wasDash = isDash;
        }
        runs.erase(runs.begin());
        runs.pop_back();
        return runs;
    }
};

TEST_F(DropZoneAppearanceTest, centresTheTextsOfTheDropZone) {
    for (const char* name : {"dropTitle", "dropExplanation"}) {
        const auto* label = find<Label>(view_, name);
        const QImage picture = image(find<Label>(view_, name));
        QRect ink;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (!isNear(picture.pixelColor(x, y), windowColor(), 10)) {
                    ink |= QRect(x, y, 1, 1);
                }
            }
        }
        EXPECT_GT(picture.width() - ink.width(), 50) << name;
        EXPECT_NEAR(ink.center().x(), picture.width() / 2.0, 2) << name;
        EXPECT_TRUE(label->alignment().testFlag(Qt::AlignTop)) << name;
    }
}

TEST_F(DropZoneAppearanceTest, paintsARingOnTheDiscOfTheDropZone) {
    const QImage disc = image(find<QWidget>(view_, "dropBadge"));
    const QColor purple{QRgb(lightPurple)};
    const QColor fill = mixed(windowColor(), purple, 0.1);
    EXPECT_COLOR(disc.pixelColor(1, 56), fill, 2);
    EXPECT_COLOR(disc.pixelColor(110, 56), fill, 2);
    EXPECT_COLOR(disc.pixelColor(3, 20), windowColor(), 0);
    // A ring of 88 pixels, one pixel wide.
    const QColor ring = mixed(fill, purple, 0.25);
    for (const int place : {12, 99}) {
        EXPECT_COLOR(disc.pixelColor(place, 55), ring, 4);
        EXPECT_COLOR(disc.pixelColor(56, place), ring, 4);
    }
    for (const int place : {10, 14, 97, 101}) {
        EXPECT_COLOR(disc.pixelColor(place, 56), fill, 2);
    }
}

TEST_F(DropZoneAppearanceTest, outlinesTheDropZoneThinAndPale) {
    const QColor pale = mixed(windowColor(), Qt::black, 0.74 * 0.2);
    EXPECT_COLOR(outlineColor(25), windowColor(), 0);
    EXPECT_COLOR(outlineColor(26), pale, 2);
    EXPECT_COLOR(outlineColor(27), windowColor(), 0);
}

TEST_F(DropZoneAppearanceTest, outlinesTheTargetedDropZoneTwiceAsWideInPurple) {
    const QImage idle = image(zone());
    scenario_.model->setIsDropTargeted(true);
    settle();
    const QColor purple{QRgb(lightPurple)};
    EXPECT_COLOR(outlineColor(25), windowColor(), 0);
    EXPECT_COLOR(outlineColor(26), purple, 2);
    EXPECT_COLOR(outlineColor(27), purple, 2);
    EXPECT_COLOR(outlineColor(28), windowColor(), 0);
    // Nothing else changes.
    const QRect inside = zone()->rect().adjusted(50, 45, -50, -45);
    EXPECT_EQ(image(zone()).copy(inside), idle.copy(inside));
    scenario_.model->setIsDropTargeted(false);
    settle();
    EXPECT_EQ(image(zone()), idle);
}

TEST_F(DropZoneAppearanceTest, dashesTheOutlineEverySevenPixels) {
    for (const bool isTargeted : {false, true}) {
        scenario_.model->setIsDropTargeted(isTargeted);
        settle();
        const std::vector<int> runs = dashes(26);
        ASSERT_GT(runs.size(), 10U);
        for (const int run : runs) {
            EXPECT_NEAR(run, 7, 1);
        }
        const int first = runs[0] + runs[1];
        EXPECT_NEAR(first, 14, 1);
    }
}

TEST_F(DropZoneAppearanceTest, keepsTheOutlineAwayFromTheEdges) {
    scenario_.model->setIsDropTargeted(true);
    settle();
    const QImage picture = image(zone());
    const QColor purple{QRgb(lightPurple)};
    const auto isOutline = [&](int x, int y) {
        return isNear(picture.pixelColor(x, y), purple, 40);
    };
    QRect bounds;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (isOutline(x, y)) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    EXPECT_EQ(bounds, zone()->rect().adjusted(26, 20, -26, -20));
}

TEST_F(DropZoneAppearanceTest, outlinesTheDropZoneInTheColorsOfADarkPalette) {
    makeDark();
    EXPECT_COLOR(outlineColor(26), mixed(windowColor(), Qt::white, 0.74 * 0.2), 2);
    scenario_.model->setIsDropTargeted(true);
    settle();
    EXPECT_COLOR(outlineColor(26), QColor(QRgb(darkPurple)), 2);
}

} // namespace
} // namespace kestrel
