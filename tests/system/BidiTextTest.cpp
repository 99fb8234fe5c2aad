#include "BidiText.h"

#include <QString>

#include <gtest/gtest.h>

#include <string>

namespace kestrel {
namespace {

/// Letters for characters that an editor would hide: L, R and F for the isolates U+2066, U+2067 and
/// U+2068, E for their end U+2069, X for U+FFFD.
constexpr QChar characterOf(char letter) {
    switch (letter) {
    case 'L':
        return QChar(0x2066);
    case 'R':
        return QChar(0x2067);
    case 'F':
        return QChar(0x2068);
    case 'E':
        return QChar(0x2069);
    case 'X':
        return QChar(0xFFFD);
    default:
        return QChar::fromLatin1(letter);
    }
}

QString decoded(const std::string& letters) {
    QString text;
    for (const char letter : letters) {
        text += characterOf(letter);
    }
    return text;
}

std::string encoded(const QString& text) {
    std::string letters;
    for (const QChar character : text) {
        for (const char letter : {'L', 'R', 'F', 'E', 'X'}) {
            if (character == characterOf(letter)) {
                letters += letter;
            }
        }
        if (character < QChar(0x80)) {
            letters += character.toLatin1();
        }
    }
    return letters;
}

std::string isolatedText(const std::string& letters) {
    return encoded(bidiIsolated(decoded(letters)));
}

TEST(BidiTextTest, standsInAnIsolate) {
    EXPECT_EQ(isolatedText(""), "FE");
    EXPECT_EQ(isolatedText("a"), "FaE");
}

TEST(BidiTextTest, keepsTheIsolatesThatItsTextCloses) {
    EXPECT_EQ(isolatedText("aLbEc"), "FaLbEcE");
    EXPECT_EQ(isolatedText("aRbEc"), "FaRbEcE");
    EXPECT_EQ(isolatedText("aFbEc"), "FaFbEcE");
}

TEST(BidiTextTest, closesTheIsolatesThatItsTextLeavesOpen) {
    EXPECT_EQ(isolatedText("LaLbEc"), "FLaLbEcEE");
    EXPECT_EQ(isolatedText("RaRbEc"), "FRaRbEcEE");
    EXPECT_EQ(isolatedText("FaFbEc"), "FFaFbEcEE");
}

TEST(BidiTextTest, replacesAnEndWithoutAnIsolate) {
    EXPECT_EQ(isolatedText("aEb"), "FaXbE");
    EXPECT_EQ(isolatedText("RaEbEc"), "FRaEbXcE");
}

} // namespace
} // namespace kestrel
