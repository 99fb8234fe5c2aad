#include "Button.h"
#include "Divider.h"
#include "Label.h"
#include "PaintCounter.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "StatusDot.h"
#include "SymbolView.h"

#include <gtest/gtest.h>

#include <functional>

namespace kestrel {
namespace {

/// Returns whether the change repaints a widget that keeps its size.
bool repaints(QWidget& widget, const std::function<void()>& change) {
    widget.setFixedSize(60, 30);
    EXPECT_TRUE(showActive(widget));
    PaintCounter paints(widget);
    change();
    return test::runUntil([&paints] { return paints.count > 0; });
}

TEST(RepaintTest, followsANewColorOfALabel) {
    Label label(QStringLiteral("text"));
    EXPECT_TRUE(repaints(label, [&label] { label.setThemeColor(ThemeColor::Name::red); }));
}

TEST(RepaintTest, followsANewOpacityOfADivider) {
    Divider divider(Qt::Horizontal);
    EXPECT_TRUE(repaints(divider, [&divider] { divider.setOpacity(0.5); }));
}

TEST(RepaintTest, followsANewInsetOfASymbol) {
    SymbolView view(Symbol::plus, {}, ThemeColor::Name::green);
    EXPECT_TRUE(repaints(view, [&view] { view.setTrailingInset(4); }));
}

TEST(RepaintTest, followsANewColorOfADot) {
    StatusDot dot;
    EXPECT_TRUE(repaints(dot, [&dot] { dot.setThemeColor(ThemeColor::Name::red); }));
}

TEST(RepaintTest, doesNotRepaintADotOfTheSameColor) {
    StatusDot dot;
    EXPECT_TRUE(repaints(dot, [&dot] { dot.setThemeColor(ThemeColor::Name::green); }));
    PaintCounter paints(dot);
    dot.setThemeColor(ThemeColor::Name::green);
    settle();
    EXPECT_EQ(paints.count, 0);
}

} // namespace
} // namespace kestrel
