#include "DiagnosticsTail.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace kestrel {
namespace {

using namespace std::string_literals;

std::string diagnosticsTail(std::string_view bytes) {
    DiagnosticsTail tail;
    tail.feed(bytes);
    return tail.finish();
}

TEST(DiagnosticsTail, isTheLastEightNonEmptyLines) {
    std::string diagnostics;
    std::string expected;
    for (int i = 1; i <= 20; ++i) {
        diagnostics += "line " + std::to_string(i) + "\n\n";
        if (i > 12) {
            expected += (i > 13 ? "\n" : "") + "line "s + std::to_string(i);
        }
    }
    EXPECT_EQ(diagnosticsTail(diagnostics), expected);
}

TEST(DiagnosticsTail, isEverythingIfShorter) {
    EXPECT_EQ(diagnosticsTail(""), "");
    EXPECT_EQ(diagnosticsTail("\n\n\n"), "");
    EXPECT_EQ(diagnosticsTail("one"), "one");
    EXPECT_EQ(diagnosticsTail("\none\n\ntwo"), "one\ntwo");
    EXPECT_EQ(diagnosticsTail("1\n2\n3\n4\n5\n6\n7\n8"), "1\n2\n3\n4\n5\n6\n7\n8");
    EXPECT_EQ(diagnosticsTail("1\n2\n3\n4\n5\n6\n7\n8\n9\n"), "2\n3\n4\n5\n6\n7\n8\n9");
}

TEST(DiagnosticsTail, keepsBlanksAndCarriageReturns) {
    EXPECT_EQ(diagnosticsTail(" a \r\n\r\nb\t"), " a \r\n\r\nb\t");
}

TEST(DiagnosticsTail, replacesInvalidUtf8) {
    EXPECT_EQ(diagnosticsTail("gr\xc3\xbc\xc3\x9f\xff\nx\xc3\ny"),
              "grüß\xef\xbf\xbd\nx\xef\xbf\xbd\ny");
    EXPECT_EQ(diagnosticsTail("a\0b"s), "a\0b"s);
}

TEST(DiagnosticsTail, isIndependentOfChunkBoundaries) {
    const std::string text = "\n1\n\n2\r\n3 \xc3\xbc\n\xff\n5\n6\n7\n\n8\n9\n\n10";
    const std::string expected = diagnosticsTail(text);
    EXPECT_EQ(expected, "3 ü\n\xef\xbf\xbd\n5\n6\n7\n8\n9\n10");
    for (std::size_t i = 0; i <= text.size(); ++i) {
        for (std::size_t j = i; j <= text.size(); ++j) {
            DiagnosticsTail tail;
            tail.feed(text.substr(0, i));
            tail.feed(text.substr(i, j - i));
            tail.feed(text.substr(j));
            EXPECT_EQ(tail.finish(), expected) << i << ", " << j;
        }
    }
}

} // namespace
} // namespace kestrel
