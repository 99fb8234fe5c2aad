#include "ApplicationFont.h"

#include "Scenario.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

TEST(ApplicationFontTest, tellsOfAChangeOnceHoweverManyWindowsThereAre) {
    int changes = 0;
    QObject receiver;
    QObject::connect(ApplicationFont::shared(), &ApplicationFont::changed, &receiver,
                     [&changes] { ++changes; });
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPixelSize(31);
    QApplication::setFont(font);
    settle();
    EXPECT_EQ(changes, 1);
    const QWidget one;
    const QWidget other;
    QApplication::setFont(before);
    settle();
    EXPECT_EQ(changes, 2);
}

} // namespace
} // namespace kestrel
