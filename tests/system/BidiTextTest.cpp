#include "BidiText.h"

#include <QString>

#include <gtest/gtest.h>

#include <string>

namespace kestrel {
namespace {

std::string isolatedText(const char* text) {
    return bidiIsolated(QString::fromUtf8(text)).toStdString();
}

TEST(BidiTextTest, standsInAnIsolate) {
    EXPECT_EQ(isolatedText(""), "\u2068\u2069");
    EXPECT_EQ(isolatedText("a"), "\u2068a\u2069");
}

TEST(BidiTextTest, keepsTheIsolatesThatItsTextCloses) {
    for (const std::string opening : {"\u2066", "\u2067", "\u2068"}) {
        const std::string text = "a" + opening + "b\u2069c";
        EXPECT_EQ(isolatedText(text.c_str()), "\u2068" + text + "\u2069");
    }
}

TEST(BidiTextTest, closesTheIsolatesThatItsTextLeavesOpen) {
    for (const std::string opening : {"\u2066", "\u2067", "\u2068"}) {
        const std::string text = opening + "a" + opening + "b\u2069c";
        EXPECT_EQ(isolatedText(text.c_str()), "\u2068" + text + "\u2069\u2069");
    }
}

TEST(BidiTextTest, replacesAnEndWithoutAnIsolate) {
    EXPECT_EQ(isolatedText("a\u2069b"), "\u2068a\uFFFDb\u2069");
    EXPECT_EQ(isolatedText("\u2067a\u2069b\u2069c"), "\u2068\u2067a\u2069b\uFFFDc\u2069");
}

} // namespace
} // namespace kestrel
