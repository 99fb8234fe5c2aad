#include "PopUpButton.h"

#include "Scenario.h"
#include "Timeout.h"

#include <QAbstractItemView>
#include <QPalette>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class PopUpButtonTest : public ::testing::Test {
  protected:
    PopUpButtonTest() {
        box_.addItems({QStringLiteral("one"), QStringLiteral("two")});
        EXPECT_TRUE(showActive(window_));
        box_.setFocus();
    }

    bool isOpen() const { return box_.view()->isVisible(); }

    QWidget window_;
    PopUpButton box_{&window_};
};

TEST_F(PopUpButtonTest, opensItsListByReturnAndEnter) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        ASSERT_FALSE(isOpen());
        QTest::keyClick(&box_, key);
        EXPECT_TRUE(isOpen()) << key;
        box_.hidePopup();
        settle();
    }
}

TEST_F(PopUpButtonTest, followsTheApplicationFont) {
    const QFont original = QApplication::font();
    QFont large = original;
    large.setPointSizeF(2 * original.pointSizeF());
    QApplication::setFont(large);
    EXPECT_EQ(box_.font().pointSizeF(), large.pointSizeF());
    QApplication::setFont(original);
    EXPECT_EQ(box_.font().pointSizeF(), original.pointSizeF());
}

TEST_F(PopUpButtonTest, changesItsChoiceByArrowKeysWhileClosed) {
    QTest::keyClick(&box_, Qt::Key_Down);
    EXPECT_EQ(utf8(box_.currentText()), "two");
    EXPECT_FALSE(isOpen());
}

TEST_F(PopUpButtonTest, tellsAssistiveTechnologyItsChoice) {
    box_.setCurrentIndex(1);
    EXPECT_EQ(utf8(box_.accessibleDescription()), "two");
}

TEST_F(PopUpButtonTest, takesTheFocusByTabAndByAClick) {
    EXPECT_EQ(box_.focusPolicy(), Qt::StrongFocus);
}

TEST_F(PopUpButtonTest, givesItsListTheHighlightOfItsOwnPalette) {
    QPalette palette(QColor(Qt::white), QColor(10, 20, 30), QColor(40, 50, 60), QColor(1, 2, 3),
                     QColor(4, 5, 6), QColor(200, 210, 220), QColor(230, 231, 232),
                     QColor(70, 80, 90), QColor(11, 12, 13));
    palette.setColor(QPalette::Highlight, QColor(100, 0, 100));
    palette.setColor(QPalette::HighlightedText, QColor(250, 251, 252));
    box_.setPalette(palette);
    box_.showPopup();
    const QPalette list = box_.view()->palette();
    EXPECT_EQ(list.color(QPalette::Highlight), QColor(100, 0, 100));
    EXPECT_EQ(list.color(QPalette::HighlightedText), QColor(250, 251, 252));
    EXPECT_EQ(list.color(QPalette::Text), QColor(200, 210, 220));
    EXPECT_EQ(list.color(QPalette::Base), QColor(70, 80, 90));
    EXPECT_EQ(list.color(QPalette::Window), QColor(70, 80, 90));
    box_.hidePopup();
}

} // namespace
} // namespace kestrel
