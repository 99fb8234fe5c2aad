#include "LineSplitter.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <string>
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

TEST(LineSplitter, acceptsLfCrAndCrLf) {
    EXPECT_THAT(lines("a\nb\r\nc\rd"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(lines("a\n\nb\n"), ElementsAre("a", "", "b"));
    EXPECT_THAT(lines("a\r\r\nb"), ElementsAre("a", "", "b"));
    EXPECT_THAT(lines("\r\n\n"), ElementsAre("", ""));
    EXPECT_THAT(lines("\na"), ElementsAre("", "a"));
    EXPECT_THAT(lines(""), IsEmpty());
}

TEST(LineSplitter, isIndependentOfChunkBoundaries) {
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

TEST(LineSplitter, dropsOverlongLines) {
    const std::string longest(std::size_t(64 * 1024), 'x');
    EXPECT_THAT(lines("a\n" + longest + "\nb"), ElementsAre("a", longest, "b"));
    EXPECT_THAT(lines("a\n" + longest + "x\nb"), ElementsAre("a", "b"));
    EXPECT_THAT(lines("a\n" + longest + longest + longest), ElementsAre("a"));
}

} // namespace
} // namespace kestrel
