#include "DisplayText.h"

#include "Scenario.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

namespace kestrel {
namespace {

using namespace std::string_literals;

TEST(DisplayTextTest, showsUTF8AsItIs) {
    EXPECT_EQ(utf8(displayText("Übung & <b>Café</b> 𝄞.opus")), "Übung & <b>Café</b> 𝄞.opus");
}

TEST(DisplayTextTest, showsBytesThatAreNotUTF8AsReplacementCharacters) {
    EXPECT_EQ(utf8(displayText("caf\xE9.opus")), "caf\uFFFD.opus");
}

TEST(DisplayTextTest, showsEveryKindOfLineEndAndControlInANameAsReplacementCharacter) {
    EXPECT_EQ(utf8(displayText("a\nb\rc\td\x1B\x7F\u0085\u2028\u2029z")),
              "a\uFFFDb\uFFFDc\uFFFDd\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz");
}

TEST(DisplayTextTest, keepsTheLinesOfAMessage) {
    EXPECT_EQ(utf8(displayMessage("one\ntwo\r\nthree\rfour\tend\x01\0"s)),
              "one\ntwo\nthree\nfour end\uFFFD\uFFFD");
}

TEST(DisplayTextTest, breaksAMessageAtEveryLineSeparator) {
    for (const char* separator : {"\n", "\r\n", "\r", "\u2028", "\u2029"}) {
        EXPECT_EQ(utf8(displayMessage(std::string("one") + separator + "two")), "one\ntwo");
    }
}

TEST(DisplayTextTest, keepsStartAndEndOfALongMessage) {
    const std::string message = "first line\n" + std::string(8'000'000, 'x') + "\nlast line";
    const QString text = displayMessage(message);
    EXPECT_TRUE(text.startsWith(QStringLiteral("first line\nxxx")));
    EXPECT_TRUE(text.contains(QStringLiteral("x\n…\nx")));
    EXPECT_TRUE(text.endsWith(QStringLiteral("xxx\nlast line")));
    EXPECT_EQ(text.size(), 4096 + 3);
}

TEST(DisplayTextTest, keepsAllOfAMessageOf4096Bytes) {
    const std::string message(4096, 'x');
    EXPECT_EQ(utf8(displayMessage(message)), message);
    EXPECT_TRUE(displayMessage(message + "y").endsWith(QStringLiteral("xy")));
}

TEST(DisplayTextTest, cutsNoCharacterInHalf) {
    for (const std::string start : {"", "x", "xx", "xxx"}) {
        std::string message = start;
        while (message.size() < 6000) {
            message += "\U0001F3B5";
        }
        for (const std::string end : {"", "x", "xx", "xxx"}) {
            const QString text = displayMessage(message + end);
            EXPECT_FALSE(text.contains(QChar::ReplacementCharacter)) << start << end;
            EXPECT_TRUE(text.contains(QStringLiteral("\n…\n"))) << start << end;
        }
    }
}

TEST(DisplayTextTest, keepsStartAndEndOfALongMessageOfInvalidBytes) {
    const QString text = displayMessage(std::string(100'000, '\x80'));
    EXPECT_GT(text.count(QChar::ReplacementCharacter), 4000);
}

TEST(DisplayTextTest, isolatesNothingWhereNothingIsDirectional) {
    EXPECT_EQ(utf8(isolated(QStringLiteral("Café 2.opus"))), "Café 2.opus");
}

TEST(DisplayTextTest, isolatesEveryNameInTextFromRightToLeft) {
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(utf8(isolated(QStringLiteral("Help!.opus"))), "\u2068Help!.opus\u2069");
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST(DisplayTextTest, isolatesOverrides) {
    EXPECT_EQ(utf8(isolated(QStringLiteral("a\u202Eb"))), "\u2068a\u202Eb\u2069");
}

TEST(DisplayTextTest, isolatesRightToLeftNames) {
    EXPECT_EQ(utf8(isolated(QStringLiteral("שיר.opus"))), "\u2068שיר.opus\u2069");
}

TEST(DisplayTextTest, letsNoNameCloseTheIsolateAroundIt) {
    EXPECT_EQ(utf8(isolated(QStringLiteral("a\u2069b"))), "\u2068a\uFFFDb\u2069");
}

TEST(DisplayTextTest, closesTheIsolatesThatANameLeavesOpen) {
    EXPECT_EQ(utf8(isolated(QStringLiteral("a\u2067b\u2066c\u2069"))),
              "\u2068a\u2067b\u2066c\u2069\u2069\u2069");
}

TEST(DisplayTextTest, escapesMarkupInToolTips) {
    EXPECT_EQ(utf8(toolTipText(QStringLiteral("<b>a&b"))),
              "<p style=\"white-space:pre-wrap\">&lt;b&gt;a&amp;b</p>");
}

TEST(DisplayTextTest, keepsStartAndEndOfALongToolTip) {
    const QString text = toolTipText(u'a' + QString(100'000, u'x') + u'b');
    EXPECT_LT(text.size(), 4300);
    EXPECT_TRUE(text.contains(QStringLiteral(">ax")));
    EXPECT_TRUE(text.contains(QStringLiteral("x…x")));
    EXPECT_TRUE(text.contains(QStringLiteral("xb<")));
}

TEST(DisplayTextTest, showsEveryMessageWholeInAToolTip) {
    const QString message = displayMessage(std::string(100'000, 'x') + "\nlast line");
    EXPECT_TRUE(toolTipText(message).contains(message));
}

} // namespace
} // namespace kestrel
