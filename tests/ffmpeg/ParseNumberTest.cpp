#include "ParseNumber.h"

#include "DurationScanner.h"
#include "ProgressParser.h"

#include <gmock/gmock.h>

#include <clocale>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace kestrel {
namespace {

using ::testing::DoubleEq;
using ::testing::Optional;

TEST(ParseNumber, readsADecimalPointInALocaleThatWritesAComma) {
    ::setenv("LOCPATH", TEST_LOCALES, 1);
    ASSERT_NE(std::setlocale(LC_ALL, "tr_TR.UTF-8"), nullptr);
    ASSERT_EQ(std::strtod("5,5", nullptr), 5.5);
    EXPECT_EQ(parseNumber("5.5"), 5.5);
    // On i386, GCC 12 rounds only what leaves the x87 registers.
    EXPECT_THAT(progressFraction("out_time_ms=2500000.5", 5),
                Optional(DoubleEq(2500000.5 / 1000000 / 5)));
    DurationScanner scanner;
    scanner.feed("Duration: 00:00:05.50");
    EXPECT_EQ(scanner.finish(), 5.5);
    ASSERT_NE(std::setlocale(LC_ALL, "C"), nullptr);
    ::unsetenv("LOCPATH");
}

TEST(ParseNumber, takesDecimalNumbersOnly) {
    EXPECT_EQ(parseNumber("12"), 12);
    EXPECT_EQ(parseNumber("-.5e-1"), -0.05);
    EXPECT_EQ(parseNumber("1."), 1);
    for (const char* text : {"", "-", ".", "+1", " 1", "1 ", "1e", "--1", "1.5.2", "0x10", "inf",
                             "nan", "infinity", "1,5", "N/A"}) {
        EXPECT_EQ(parseNumber(text), std::nullopt) << text;
    }
    EXPECT_EQ(parseNumber(std::string_view("1\0", 2)), std::nullopt);
}

TEST(ParseNumber, tellsAnUnderflowFromAnOverflow) {
    for (const char* text : {"1e-400", "-1e-400", "0.0000001e-399", "1e-99999999999999999999"}) {
        EXPECT_EQ(parseNumber(text), 0) << text;
    }
    for (const char* text : {"1e400", "-1e400", "1e99999999999999999999"}) {
        EXPECT_EQ(parseNumber(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace kestrel
