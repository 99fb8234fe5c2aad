#include "DurationScanner.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>

namespace kestrel {
namespace {

using namespace std::string_literals;

constexpr std::size_t chunkSizes[] = {1, 100, 5000, 65'536};

/// The duration in the bytes, fed in chunks of this size.
double durationIn(std::string_view bytes, std::size_t chunkSize = 65'536) {
    DurationScanner scanner;
    for (std::size_t i = 0; i < bytes.size(); i += chunkSize) {
        scanner.feed(bytes.substr(i, chunkSize));
    }
    return scanner.finish();
}

TEST(DurationScanner, parsesTheFirstDuration) {
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
        EXPECT_DOUBLE_EQ(durationIn(text), seconds) << text;
    }
}

TEST(DurationScanner, isIndependentOfChunkBoundaries) {
    const std::string text =
        "Dur\xc3\xbc"
        "Duration: N/A\nDDuration: 1:2Duration: 12:34:56.75, start: 0\nDuration: 0:0:1";
    ASSERT_EQ(durationIn(text), 12 * 3600 + 34 * 60 + 56.75);
    for (std::size_t size = 1; size <= text.size(); ++size) {
        EXPECT_EQ(durationIn(text, size), durationIn(text)) << "chunks of " << size;
    }
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        DurationScanner scanner;
        scanner.feed(std::string_view(text).substr(0, cut));
        scanner.feed(std::string_view(text).substr(cut));
        EXPECT_EQ(scanner.finish(), durationIn(text)) << "cut at " << cut;
    }
}

TEST(DurationScanner, continuesANumberInTheNextChunk) {
    for (const char* rest : {"5", "5.", "5.25", ".25", "."}) {
        DurationScanner scanner;
        scanner.feed("Duration: 0:0:1");
        scanner.feed(rest);
        EXPECT_EQ(scanner.finish(), std::stod("1"s + rest)) << rest;
    }
}

TEST(DurationScanner, usesTheFirstDurationEvenIfInvalid) {
    const std::string beyond = "Duration: " + std::string(400, '9') + ":0:0\n";
    EXPECT_EQ(durationIn(beyond + "Duration: 0:0:5\n"), 0);
    const std::string tooLong(DurationScanner::maximumLength + 1, '0');
    EXPECT_EQ(durationIn("Duration: " + tooLong + ":0:5\nDuration: 0:0:5\n", 100), 0);
    const std::string longEnough(DurationScanner::maximumLength - 100, '0');
    EXPECT_EQ(durationIn("Duration: " + longEnough + ":0:5\nDuration: 0:0:7\n", 100), 5);
}

TEST(DurationScanner, limitsTheLengthWhateverTheChunkSize) {
    const std::size_t zeros = 4096 - "Duration: :0:5"s.size();
    const std::string longest = "Duration: " + std::string(zeros, '0') + ":0:5";
    const std::string tooLong = "Duration: 0" + std::string(zeros, '0') + ":0:5";
    for (const std::size_t size : chunkSizes) {
        EXPECT_EQ(durationIn(longest + "\nDuration: 0:0:7", size), 5) << "chunks of " << size;
        EXPECT_EQ(durationIn(tooLong + "\nDuration: 0:0:7", size), 0) << "chunks of " << size;
        EXPECT_EQ(durationIn(tooLong, size), 0) << "chunks of " << size;
    }
}

TEST(DurationScanner, skipsLongPartialMatches) {
    const std::string digits(DurationScanner::maximumLength * 2, '1');
    const std::string hours = digits + ":";
    for (const std::size_t size : chunkSizes) {
        for (const std::string& start : {digits, hours, hours + digits}) {
            EXPECT_EQ(durationIn("Duration: " + start + "x\nDuration: 0:0:7", size), 7)
                << "chunks of " << size;
            EXPECT_EQ(durationIn("Duration: " + start, size), 0) << "chunks of " << size;
        }
    }
}

TEST(DurationScanner, findsADurationInInvalidUtf8) {
    EXPECT_EQ(durationIn("\xff\xfe\0title: \x80\nDuration: 00:00:05.00\xc3"s), 5);
}

TEST(DurationScanner, isZeroOnOverflow) {
    EXPECT_EQ(durationIn("Duration: " + std::string(400, '9') + ":00:00"), 0);
    EXPECT_EQ(durationIn("Duration: " + std::string(308, '9') + ":00:00"), 0);
}

TEST(DurationScanner, treatsUnderflowAsZero) {
    EXPECT_EQ(durationIn("Duration: 0:5:0." + std::string(400, '0') + "2"), 300);
}

TEST(DurationScanner, findsADurationAfterMegabytes) {
    EXPECT_EQ(durationIn(std::string(4'000'000, '1') + "Duration: 00:00:05.00"), 5);
}

} // namespace
} // namespace kestrel
