#pragma once

#include "ContentView.h"
#include "Label.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace kestrel {

constexpr int lightPurple = 0x9540C8;
constexpr int darkPurple = 0xD084FA;

inline bool isNear(const QColor& a, const QColor& b, int tolerance) {
    return std::abs(a.red() - b.red()) <= tolerance &&
           std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

#define EXPECT_COLOR(actual, expected, tolerance)                                                  \
    EXPECT_TRUE(isNear(actual, expected, tolerance))                                               \
        << utf8((actual).name()) << " is not " << utf8((expected).name())

/// The window, for checks of its pixels; in a light palette by default.
class AppearanceFixture : public ::testing::Test {
  protected:
    AppearanceFixture()
        : view_(scenario_.model, [this] {
              return hasFFmpeg_ ? std::optional(FileURL("/usr/bin/ffmpeg")) : std::nullopt;
          }) {
        QPalette light(QColor(Qt::black), QColor(0xEE, 0xEE, 0xEE));
        view_.setPalette(light);
        view_.resize(960, 640);
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_, test::timeout));
        settle();
    }

    void makeDark() {
        view_.setPalette(QPalette(QColor(Qt::white), QColor(0x20, 0x20, 0x22)));
        settle();
    }

    QImage image() { return view_.grab().toImage(); }

    QImage image(QWidget* widget) {
        return image().copy(QRect(widget->mapTo(&view_, QPoint()), widget->size()));
    }

    QColor windowColor() const { return view_.palette().color(QPalette::Window); }

    QColor colorOf(const char* name) const { return find<Label>(view_, name)->color(); }

    Scenario scenario_;
    bool hasFFmpeg_ = true;
    ContentView view_;
};

} // namespace kestrel
