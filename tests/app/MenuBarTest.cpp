#include "MenuBar.h"

#include "MenuBarStyle.h"
#include "PixelArt.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QApplication>
#include <QImage>
#include <QMenu>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

class NoMnemonicsStyle : public MenuBarStyle {
  public:
    using MenuBarStyle::MenuBarStyle;

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        return hint == SH_UnderlineShortcut ? 0
                                            : MenuBarStyle::styleHint(hint, option, widget, result);
    }
};

class MenuBarTest : public ::testing::Test {
  public:
    MenuBarTest(const MenuBarTest&) = delete;
    MenuBarTest& operator=(const MenuBarTest&) = delete;

  protected:
    MenuBarTest() : bar_(new MenuBar(28, &window_)), menu_(bar_->addMenu(QStringLiteral("&File"))) {
        for (const char* text : {"One", "Two"}) {
            QObject::connect(menu_->addAction(QString::fromLatin1(text)), &QAction::triggered,
                             [this, text] { triggered_ = text; });
        }
        window_.setPalette(Qt::black);
        window_.setFixedSize(400, 200);
        bar_->move(20, 0);
        bar_->resize(bar_->sizeHint());
        EXPECT_TRUE(showActive(window_));
    }

    ~MenuBarTest() override { QApplication::setFont(font_); }

    /// How many pixels of the bar are white or nearly so.
    int whitePixels() const {
        const QImage image = picture();
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                pixels += image.pixelColor(x, y).lightness() > 200 ? 1 : 0;
            }
        }
        return pixels;
    }

    QImage picture() const { return window_.grab(bar_->geometry()).toImage(); }

    void expectToOpenWith(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(&window_, key, modifiers);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(menu_, test::timeout));
        EXPECT_EQ(utf8(menu_->activeAction()->text()), "One");
        QTest::keyClick(menu_, Qt::Key_Down);
        QTest::keyClick(menu_, Qt::Key_Return);
        EXPECT_EQ(triggered_, "Two");
        EXPECT_FALSE(menu_->isVisible());
    }

    // mutable: grab() is not const.
    mutable QWidget window_;
    MenuBar* bar_;
    QMenu* menu_;
    std::string triggered_;
    const QFont font_ = QApplication::font();
};

TEST_F(MenuBarTest, drawsWhiteTextWithoutABackground) {
    EXPECT_GT(whitePixels(), 10);
    EXPECT_EQ(picture().pixelColor(1, 1), QColor(Qt::black));
    EXPECT_EQ(picture().pixelColor(1, 27), QColor(Qt::black));
}

TEST_F(MenuBarTest, drawsWhiteTextInALightPaletteToo) {
    // The sidebar behind it is always dark.
    QPalette palette(Qt::black);
    palette.setColor(QPalette::WindowText, Qt::red);
    palette.setColor(QPalette::ButtonText, Qt::red);
    bar_->setPalette(palette);
    EXPECT_GT(whitePixels(), 10);
    const QImage image = picture();
    for (int x = 0; x < image.width(); ++x) {
        const QColor pixel = image.pixelColor(x, 14);
        EXPECT_EQ(pixel.red(), pixel.green()) << x;
    }
}

TEST_F(MenuBarTest, isAsWideAsItsItems) {
    EXPECT_LT(bar_->width(), 80);
    const int one = bar_->sizeHint().width();
    const int text = QFontMetrics(bar_->font())
                         .size(Qt::TextSingleLine | Qt::TextShowMnemonic, QStringLiteral("&File"))
                         .width();
    EXPECT_EQ(one, text + 2 * 10);
    bar_->addMenu(QStringLiteral("File"));
    EXPECT_EQ(bar_->sizeHint(), QSize(2 * one, 28));
}

TEST_F(MenuBarTest, highlightsTheItemUnderTheMouseAndMoreSoTheOpenOne) {
    const auto background = [this] { return picture().pixelColor(5, 14).red(); };
    EXPECT_EQ(background(), 0);
    QMouseEvent move(QEvent::MouseMove, QPointF(10, 14), bar_->mapToGlobal(QPointF(10, 14)),
                     Qt::NoButton, {}, {});
    QApplication::sendEvent(bar_, &move);
    const int hovered = background();
    EXPECT_GT(hovered, 15);
    QTest::mousePress(bar_, Qt::LeftButton, {}, {10, 14});
    ASSERT_TRUE(menu_->isVisible());
    EXPECT_GT(background(), hovered);
    // Three pixels from the top, with rounded corners.
    const QColor fill = picture().pixelColor(5, 14);
    EXPECT_EQ(picture().pixelColor(10, 2), QColor(Qt::black));
    EXPECT_EQ(picture().pixelColor(10, 3), fill);
    EXPECT_EQ(picture().pixelColor(10, 24), fill);
    EXPECT_EQ(picture().pixelColor(10, 25), QColor(Qt::black));
    EXPECT_EQ(pixelArt(picture().copy(0, 3, 6, 6), Qt::black, fill), R"(
...++#
..####
.#####
+#####
+#####
######
)");
    menu_->close();
}

TEST_F(MenuBarTest, opensAtTheTopEdgeOfTheScreen) {
    QTest::mousePress(bar_, Qt::LeftButton, {}, {10, 0});
    EXPECT_TRUE(menu_->isVisible());
    menu_->close();
}

TEST_F(MenuBarTest, underlinesTheMnemonicIfTheStyleDoes) {
    const QImage withDesktopStyle = picture();
    const bool isUnderlined = bar_->style()->styleHint(QStyle::SH_UnderlineShortcut) != 0;
    NoMnemonicsStyle noMnemonics(28);
    bar_->setStyle(&noMnemonics);
    const QImage withoutMnemonics = picture();
    EXPECT_EQ(withDesktopStyle != withoutMnemonics, isUnderlined);
    bar_->setStyle(nullptr);
}

TEST_F(MenuBarTest, keepsTheDesktopStyleOfItsMenus) {
    EXPECT_EQ(menu_->palette(), QApplication::palette(menu_));
    EXPECT_EQ(menu_->style(), QApplication::style());
    EXPECT_NE(menu_->palette().color(QPalette::Text), menu_->palette().color(QPalette::Base));
}

TEST_F(MenuBarTest, opensWithF10) {
    expectToOpenWith(Qt::Key_F10, {});
}

TEST_F(MenuBarTest, opensWithTheMnemonic) {
    expectToOpenWith(Qt::Key_F, Qt::AltModifier);
}

TEST_F(MenuBarTest, opensNothingWithoutMenus) {
    bar_->clear();
    QTest::keyClick(&window_, Qt::Key_F10);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(MenuBarTest, usesTheUsersFontShrunkToFit) {
    QFont font = font_;
    font.setPixelSize(17);
    QApplication::setFont(font);
    settle();
    EXPECT_EQ(QFontInfo(bar_->font()).pixelSize(), 17);
    font.setPixelSize(60);
    QApplication::setFont(font);
    settle();
    EXPECT_EQ(bar_->sizeHint().height(), 28);
    EXPECT_LE(QFontMetrics(bar_->font()).height(), 28);
    EXPECT_GT(QFontMetrics(bar_->font()).height(), 18);
}

TEST_F(MenuBarTest, highlightsByTwelveAndTwentyPercent) {
    const auto background = [this] { return picture().pixelColor(5, 14).red(); };
    QMouseEvent move(QEvent::MouseMove, QPointF(10, 14), bar_->mapToGlobal(QPointF(10, 14)),
                     Qt::NoButton, {}, {});
    QApplication::sendEvent(bar_, &move);
    EXPECT_NEAR(background(), 255 * 0.12, 1);
    QTest::mousePress(bar_, Qt::LeftButton, {}, {10, 14});
    ASSERT_TRUE(menu_->isVisible());
    EXPECT_NEAR(background(), 255 * 0.2, 1);
    menu_->close();
}

TEST_F(MenuBarTest, drawsNoMenuThatIsHidden) {
    menu_->menuAction()->setVisible(false);
    bar_->resize(200, 28);
    settle();
    EXPECT_EQ(whitePixels(), 0);
}

TEST_F(MenuBarTest, opensTheFirstMenuThatCanBeOpened) {
    menu_->setEnabled(false);
    auto* hidden = bar_->addMenu(QStringLiteral("Hidden"));
    hidden->addAction(QStringLiteral("Entry"));
    hidden->menuAction()->setVisible(false);
    auto* last = bar_->addMenu(QStringLiteral("Last"));
    last->addAction(QStringLiteral("Entry"));
    bar_->resize(bar_->sizeHint());
    QTest::keyClick(&window_, Qt::Key_F10);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(last, test::timeout));
    EXPECT_EQ(QApplication::activePopupWidget(), last);
    last->close();
}

} // namespace
} // namespace kestrel
