#include "DiagnosticsParser.h"
#include "LineSplitter.h"
#include "ProgressParser.h"

#include <gmock/gmock.h>

#include <clocale>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::string_literals;

/// The lines of the bytes, fed in chunks of this size.
std::vector<std::string> lines(std::string_view bytes, std::size_t chunkSize = 4096) {
    std::vector<std::string> result;
    LineSplitter splitter([&result](std::string_view line) { result.emplace_back(line); });
    for (std::size_t i = 0; i < bytes.size(); i += chunkSize) {
        splitter.feed(bytes.substr(i, chunkSize));
    }
    splitter.finish();
    return result;
}

TEST(LineSplitter, acceptsEveryKindOfLineEnd) {
    EXPECT_THAT(lines("a\nb\r\nc\rd"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(lines("a\n\nb\n"), ElementsAre("a", "", "b"));
    EXPECT_THAT(lines("a\r\r\nb"), ElementsAre("a", "", "b"));
    EXPECT_THAT(lines("\r\n\n"), ElementsAre("", ""));
    EXPECT_THAT(lines(""), IsEmpty());
}

TEST(LineSplitter, findsTheSameLinesWhereverTheChunksAreCut) {
    const std::string bytes = "out_time_ms=1\r\n\rx=\0y\n\nprogress=end\r\n\r\nlast"s;
    const std::vector<std::string> whole = lines(bytes);
    ASSERT_THAT(whole, ElementsAre("out_time_ms=1", "", "x=\0y"s, "", "progress=end", "", "last"));
    for (std::size_t size = 1; size <= bytes.size(); ++size) {
        EXPECT_EQ(lines(bytes, size), whole) << "chunks of " << size;
    }
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        std::vector<std::string> result;
        LineSplitter splitter([&result](std::string_view line) { result.emplace_back(line); });
        splitter.feed(std::string_view(bytes).substr(0, cut));
        splitter.feed(std::string_view(bytes).substr(cut));
        splitter.finish();
        EXPECT_EQ(result, whole) << "cut at " << cut;
    }
}

TEST(LineSplitter, handsLinesOverAsTheyEnd) {
    std::vector<std::string> result;
    LineSplitter splitter([&result](std::string_view line) { result.emplace_back(line); });
    splitter.feed("a\nb");
    EXPECT_THAT(result, ElementsAre("a"));
    splitter.feed("c\r");
    EXPECT_THAT(result, ElementsAre("a", "bc"));
}

TEST(LineSplitter, passesOverLinesOfMegabytesAndGoesOn) {
    const std::string longest(LineSplitter::maximumLineLength, 'x');
    EXPECT_THAT(lines("a\n" + longest + "\nb"), ElementsAre("a", longest, "b"));
    EXPECT_THAT(lines("a\n" + longest + "x\nb"), ElementsAre("a", "b"));
    EXPECT_THAT(lines("a\n" + longest + longest + longest), ElementsAre("a"));
}

TEST(ProgressParser, reportsTheFractionOfTheDurationThatTheTimeInMicrosecondsIs) {
    EXPECT_EQ(progressFraction("out_time_ms=5000000", 10), 0.5);
    EXPECT_EQ(progressFraction("out_time_ms=0", 10), 0.0);
    EXPECT_EQ(progressFraction("out_time_ms=10000000", 10), 1.0);
    EXPECT_EQ(progressFraction("out_time_ms=2.5e6", 10), 0.25);
}

TEST(ProgressParser, stopsAtOneAndPassesNegativeTimesOn) {
    EXPECT_EQ(progressFraction("out_time_ms=12000000", 10), 1.0);
    EXPECT_EQ(progressFraction("out_time_ms=-23000", 10), -0.0023);
}

TEST(ProgressParser, reportsNoFractionWithoutADuration) {
    EXPECT_FALSE(progressFraction("out_time_ms=5000000", 0));
    EXPECT_FALSE(progressFraction("out_time_ms=5000000", -1));
    EXPECT_EQ(progressFraction("progress=end", 0), 1.0);
}

TEST(ProgressParser, ignoresWhatIsNoNumber) {
    for (const char* text : {"", "N/A", "5000000 ", " 5000000", "5,0", "5000000x", "0x10", "nan",
                             "inf", "1e999", "--5", "5\r"}) {
        EXPECT_FALSE(progressFraction("out_time_ms="s + text, 10)) << text;
    }
}

TEST(ProgressParser, reportsTheEndForThatExactLineAlone) {
    EXPECT_EQ(progressFraction("progress=end", 10), 1.0);
    for (const char* line : {"progress=end ", " progress=end", "progress=continue", "progress=",
                             "Progress=end", "", "out_time=00:00:05", "out_time_us=5000000"}) {
        EXPECT_FALSE(progressFraction(line, 10)) << line;
    }
}

TEST(DurationInDiagnostics, isHoursMinutesAndSecondsOfTheFirstLineThatHasThem) {
    const std::pair<const char*, double> rows[] = {
        {"  Duration: 00:03:25.48, start: 0.0, bitrate: 128 kb/s\n", 205.48},
        {"Duration: 1:02:03", 3723},
        {"Duration: 00:00:00.00", 0},
        {"Duration: 00:00:10.50\nDuration: 00:00:20.00", 10.5},
        {"Duration: N/A, bitrate: N/A\nDuration: 00:00:07.00", 7},
        {"Duration: 00:75:90", 75 * 60 + 90},
        {"Duration: 100:00:00.5", 360000.5},
        {"a Duration: 00:00:01.25x", 1.25},
        {"Duration: 00:00:01.", 1},
        {"Duration: N/A", 0},
        {"duration: 00:00:05", 0},
        {"Duration:00:00:05", 0},
        {"Duration: 00:05", 0},
        {"", 0},
    };
    for (const auto& [text, seconds] : rows) {
        EXPECT_DOUBLE_EQ(durationInDiagnostics(text), seconds) << text;
    }
}

TEST(DurationInDiagnostics, isFoundAmongBytesThatAreNotUtf8) {
    EXPECT_EQ(durationInDiagnostics("\xff\xfe\0title: \x80\nDuration: 00:00:05.00\xc3"s), 5);
}

TEST(DurationInDiagnostics, isZeroForDigitsBeyondAnyNumber) {
    EXPECT_EQ(durationInDiagnostics("Duration: " + std::string(400, '9') + ":00:00"), 0);
}

TEST(DurationInDiagnostics, isReadInTextsOfMegabytes) {
    EXPECT_EQ(durationInDiagnostics(std::string(4'000'000, '1') + "Duration: 00:00:05.00"), 5);
}

TEST(Parsers, readADecimalPointInALocaleThatWritesAComma) {
    ::setenv("LOCPATH", TEST_LOCALES, 1);
    ASSERT_NE(std::setlocale(LC_ALL, "tr_TR.UTF-8"), nullptr);
    ASSERT_EQ(std::strtod("5,5", nullptr), 5.5);
    EXPECT_EQ(durationInDiagnostics("Duration: 00:00:05.50"), 5.5);
    EXPECT_EQ(progressFraction("out_time_ms=2500000.5", 5), 2500000.5 / 1000000 / 5);
    std::setlocale(LC_ALL, "C");
    ::unsetenv("LOCPATH");
}

TEST(DiagnosticsTail, isTheLastEightLinesThatAreNotEmpty) {
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

TEST(DiagnosticsTail, isEverythingWhereThereIsLess) {
    EXPECT_EQ(diagnosticsTail(""), "");
    EXPECT_EQ(diagnosticsTail("\n\n\n"), "");
    EXPECT_EQ(diagnosticsTail("one"), "one");
    EXPECT_EQ(diagnosticsTail("\none\n\ntwo"), "one\ntwo");
    EXPECT_EQ(diagnosticsTail("1\n2\n3\n4\n5\n6\n7\n8"), "1\n2\n3\n4\n5\n6\n7\n8");
    EXPECT_EQ(diagnosticsTail("1\n2\n3\n4\n5\n6\n7\n8\n9\n"), "2\n3\n4\n5\n6\n7\n8\n9");
}

TEST(DiagnosticsTail, leavesBlanksAndCarriageReturnsInsideLines) {
    EXPECT_EQ(diagnosticsTail(" a \r\n\r\nb\t"), " a \r\n\r\nb\t");
}

TEST(DiagnosticsTail, replacesWhatIsNotUtf8) {
    EXPECT_EQ(diagnosticsTail("gr\xc3\xbc\xc3\x9f\xff\nx\xc3\ny"),
              "grüß\xef\xbf\xbd\nx\xef\xbf\xbd\ny");
    EXPECT_EQ(diagnosticsTail("a\0b"s), "a\0b"s);
}

} // namespace
} // namespace kestrel
