#include "ParseNumber.h"

#include "DurationScanner.h"
#include "ProgressParser.h"

#include <gmock/gmock.h>

#include <clocale>
#include <cstdlib>

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

} // namespace
} // namespace kestrel
