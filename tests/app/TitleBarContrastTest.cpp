#include "ApplicationStyle.h"
#include "CaptionButton.h"
#include "DesktopPalettes.h"
#include "ExpectContrast.h"
#include "KestrelApp.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "Timeout.h"
#include "TitleBar.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QStyle>
#include <QToolTip>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace kestrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;

/// Checks the contrast in the title bar and in its menu, in each palette.
class TitleBarContrastTest : public ::testing::TestWithParam<DesktopPalette> {
  protected:
    void SetUp() override {
        ApplicationStyle::install();
        // As Qt does with the palette of the desktop.
        QPalette palette = GetParam().palette;
        QApplication::style()->polish(palette);
        QApplication::setPalette(palette);
        app_.emplace(scenario_.model, [] { return std::nullopt; });
        ASSERT_TRUE(showActive(app_->window()));
    }

    void TearDown() override {
        app_.reset();
        QApplication::setPalette(originalPalette_);
        QApplication::setStyle(originalStyle_);
    }

    static double textContrast() { return GetParam().textContrast; }

    TitleBar& titleBar() { return *app_->window().findChild<TitleBar*>(); }

    Scenario scenario_;
    std::optional<KestrelApp> app_;

  private:
    const QPalette originalPalette_ = QApplication::palette();
    const QString originalStyle_ = QApplication::style()->name();
};

TEST_P(TitleBarContrastTest, isEnoughInEachStateOfTheButtons) {
    inEachState(titleBar(), [this](const char* state) {
        int glyphs = 0;
        for (const Painted& painted : expectContrast(app_->window(), textContrast(), state)) {
            const bool isButton = qobject_cast<CaptionButton*>(
                                      app_->window().childAt(painted.place.center())) != nullptr;
            glyphs += isButton && painted.kind == Painted::Kind::line ? 1 : 0;
        }
        EXPECT_EQ(glyphs, 1 + 1 + 2) << "a line, a frame and a cross";
    });
}

TEST_P(TitleBarContrastTest, isEnoughForFocusRings) {
    for (CaptionButton* button : titleBar().findChildren<CaptionButton*>()) {
        expectFocusRing(*button);
    }
}

TEST_P(TitleBarContrastTest, isEnoughInTheMenuBarAndItsMenu) {
    auto* bar = titleBar().findChild<QMenuBar*>();
    QMenu* menu = bar->actions().front()->menu();
    const auto checkBar = [&](const char* state) {
        std::string texts;
        for (const std::string& text :
             textsOf(expectContrast(app_->window(), textContrast(), state))) {
            texts += text;
        }
        // In two parts: its mnemonic is underlined.
        EXPECT_THAT(texts, HasSubstr("File")) << state;
    };
    checkBar("idle");
    bar->setActiveAction(bar->actions().front());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu, test::timeout));
    checkBar("open");
    for (QAction* action : menu->actions()) {
        menu->setActiveAction(action);
        const std::string state = "selected " + utf8(action->text());
        EXPECT_THAT(textsOf(expectContrast(*menu, textContrast(), state)),
                    IsSupersetOf({"Add Audio…", "Add Folder…", "Quit", "Ctrl+O"}));
    }
    menu->close();
}

TEST_P(TitleBarContrastTest, isEnoughInAToolTip) {
    QToolTip::showText(QPoint(10, 10), QStringLiteral("Show output folder"));
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto toolTip = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->inherits("QTipLabel");
    });
    ASSERT_NE(toolTip, windows.end());
    EXPECT_THAT(textsOf(expectContrast(**toolTip, textContrast(), "tool tip")),
                ElementsAre("Show output folder"));
    QToolTip::hideText();
    // It hides later, and is reused until then.
    EXPECT_TRUE(test::runUntil([tip = QPointer(*toolTip)] { return tip.isNull(); }));
}

INSTANTIATE_TEST_SUITE_P(Palettes, TitleBarContrastTest, ::testing::ValuesIn(desktopPalettes()),
                         paletteName<::testing::TestParamInfo<DesktopPalette>>);

} // namespace
} // namespace kestrel
