#include "ProgressParser.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrel {
namespace {

using namespace std::string_literals;

TEST(ProgressParser, dividesTheMicrosecondsByTheDuration) {
    EXPECT_EQ(progressFraction("out_time_ms=5000000", 10), 0.5);
    EXPECT_EQ(progressFraction("out_time_ms=0", 10), 0.0);
    EXPECT_EQ(progressFraction("out_time_ms=10000000", 10), 1.0);
    EXPECT_EQ(progressFraction("out_time_ms=2.5e6", 10), 0.25);
}

TEST(ProgressParser, clampsToOneButNotToZero) {
    EXPECT_EQ(progressFraction("out_time_ms=12000000", 10), 1.0);
    EXPECT_EQ(progressFraction("out_time_ms=-23000", 10), -0.0023);
}

TEST(ProgressParser, reportsOnlyTheEndWithoutADuration) {
    EXPECT_FALSE(progressFraction("out_time_ms=5000000", 0));
    EXPECT_FALSE(progressFraction("out_time_ms=5000000", -1));
    EXPECT_EQ(progressFraction("progress=end", 0), 1.0);
}

TEST(ProgressParser, ignoresInvalidNumbers) {
    for (const char* text : {"", "N/A", "5000000 ", " 5000000", "5,0", "5000000x", "0x10", "nan",
                             "inf", "1e999", "--5", "5\r"}) {
        EXPECT_FALSE(progressFraction("out_time_ms="s + text, 10)) << text;
    }
}

TEST(ProgressParser, treatsUnderflowAsZero) {
    const std::string zeros(400, '0');
    for (const std::string& text :
         {"1e-400"s, "-1e-400"s, "2e-324"s, "1e-99999999999999999999"s, "." + zeros + "1",
          "0." + zeros + "1e50", "1" + zeros + "e-800", "12.5E-400"s}) {
        EXPECT_EQ(progressFraction("out_time_ms=" + text, 10), 0.0) << text;
    }
    for (const std::string& text : {"1e400"s, ".01e+400"s, "1e99999999999999999999"s, "1" + zeros,
                                    "." + zeros + "1e800", "1" + zeros + ".5e-1", "1e-400x"s}) {
        EXPECT_FALSE(progressFraction("out_time_ms=" + text, 10)) << text;
    }
}

TEST(ProgressParser, reportsTheEndForTheExactLineOnly) {
    EXPECT_EQ(progressFraction("progress=end", 10), 1.0);
    for (const char* line : {"progress=end ", " progress=end", "progress=continue", "progress=",
                             "Progress=end", "", "out_time=00:00:05", "out_time_us=5000000"}) {
        EXPECT_FALSE(progressFraction(line, 10)) << line;
    }
}

} // namespace
} // namespace kestrel
