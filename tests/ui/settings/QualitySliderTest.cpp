#include "QualitySlider.h"

#include "Scenario.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class QualitySliderTest : public ::testing::Test {
  protected:
    QualitySliderTest() { slider_.showQuality(80); }

    double after(Qt::Key key) {
        QTest::keyClick(&slider_, key);
        return slider_.quality();
    }

    QualitySlider slider_;
};

TEST_F(QualitySliderTest, movesByAPercentOrTenByKeys) {
    EXPECT_EQ(after(Qt::Key_Right), 81);
    EXPECT_EQ(after(Qt::Key_Left), 80);
    EXPECT_EQ(after(Qt::Key_PageUp), 90);
    EXPECT_EQ(after(Qt::Key_PageDown), 80);
    EXPECT_EQ(after(Qt::Key_End), 100);
    EXPECT_EQ(after(Qt::Key_Home), 30);
}

TEST_F(QualitySliderTest, tellsOfEachChoiceButNotOfWhatItIsToldToShow) {
    std::vector<double> chosen;
    QObject::connect(&slider_, &QualitySlider::qualityChanged, &slider_,
                     [&chosen](double quality) { chosen.push_back(quality); });
    slider_.showQuality(50.25);
    EXPECT_TRUE(chosen.empty());
    EXPECT_EQ(slider_.quality(), 50.25);
    slider_.chooseQuality(60.5);
    slider_.chooseQuality(1000);
    slider_.chooseQuality(-5);
    EXPECT_EQ(chosen, (std::vector<double>{60.5, 100, 30}));
}

TEST_F(QualitySliderTest, takesTheFocusByTabAndByAClick) {
    EXPECT_EQ(slider_.focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(slider_.orientation(), Qt::Horizontal);
}

} // namespace
} // namespace kestrel
