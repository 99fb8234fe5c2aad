#include "DroppedItem.h"

#include <gmock/gmock.h>

#include <optional>
#include <string_view>
#include <vector>

namespace kestrel::test {
namespace {

using namespace std::string_view_literals;
using testing::ElementsAre;

std::vector<std::optional<FileURL>> loaded(std::string_view uriList) {
    std::vector<std::optional<FileURL>> result;
    for (const DroppedItem& item : droppedItems(uriList)) {
        result.push_back(item.loadFileURL());
    }
    return result;
}

TEST(DroppedItem, loadsTheLocationOfAFileUri) {
    const DroppedItem item("file:///a%20b.opus");
    EXPECT_TRUE(item.hasFileURL());
    EXPECT_EQ(item.loadFileURL(), FileURL("/a b.opus"));
}

TEST(DroppedItem, keepsBytesThatAreNotUtf8) {
    EXPECT_EQ(DroppedItem("file:///caf%E9.opus").loadFileURL(), FileURL("/caf\xE9.opus"));
}

TEST(DroppedItem, hasNoFileUrlWithAnotherScheme) {
    const DroppedItem item("https://example.org/a.opus");
    EXPECT_FALSE(item.hasFileURL());
    EXPECT_EQ(item.loadFileURL(), std::nullopt);
}

TEST(DroppedItem, loadsNothingFromAFileUriWithARemoteHost) {
    const DroppedItem item("file://another.example/a.opus");
    EXPECT_TRUE(item.hasFileURL());
    EXPECT_EQ(item.loadFileURL(), std::nullopt);
}

TEST(DroppedItems, comeInTheOrderOfTheList) {
    EXPECT_THAT(loaded("file:///b\r\nfile:///a\r\n"), ElementsAre(FileURL("/b"), FileURL("/a")));
}

TEST(DroppedItems, areReadWithEitherLineEnd) {
    EXPECT_THAT(loaded("file:///a\nfile:///b\r\nfile:///c"),
                ElementsAre(FileURL("/a"), FileURL("/b"), FileURL("/c")));
}

TEST(DroppedItems, areReadWithNulBytesAtTheEnd) {
    EXPECT_THAT(loaded("file:///a\r\n\0"sv), ElementsAre(FileURL("/a")));
    EXPECT_THAT(loaded("file:///a\0"sv), ElementsAre(FileURL("/a")));
    EXPECT_THAT(loaded("file:///a\r\0\0"sv), ElementsAre(FileURL("/a")));
}

TEST(DroppedItems, skipCommentsAndEmptyLines) {
    EXPECT_THAT(loaded("# a comment\r\n\r\nfile:///%23a\r\n\n#file:///b\n"),
                ElementsAre(FileURL("/#a")));
    EXPECT_TRUE(droppedItems("").empty());
    EXPECT_TRUE(droppedItems("\r\n\r\n").empty());
}

TEST(DroppedItems, comeAsTheTypeThatFileManagersOffer) {
    EXPECT_EQ(uriListType, "text/uri-list");
}

TEST(DroppedItems, includeUrisWithOtherSchemes) {
    const std::vector<DroppedItem> items = droppedItems("https://example.org\r\nfile:///a\r\n");
    ASSERT_EQ(items.size(), 2U);
    EXPECT_FALSE(items[0].hasFileURL());
    EXPECT_TRUE(items[1].hasFileURL());
}

} // namespace
} // namespace kestrel::test
