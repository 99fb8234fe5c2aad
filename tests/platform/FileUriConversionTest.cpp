#include "FileUriConversion.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <optional>
#include <string>

namespace kestrel::test {
namespace {

const std::optional<FileURL> none;

TEST(FileUriConversion, encodesAllButUnreservedCharactersAndSlashes) {
    EXPECT_EQ(uriFromFileUrl(FileURL("/")), "file:///");
    EXPECT_EQ(uriFromFileUrl(FileURL("/aZ09-._~/b")), "file:///aZ09-._~/b");
    EXPECT_EQ(uriFromFileUrl(FileURL("/a b#c?d%e:f&g")), "file:///a%20b%23c%3Fd%25e%3Af%26g");
    EXPECT_EQ(uriFromFileUrl(FileURL("/caf\xC3\xA9/\xFF")), "file:///caf%C3%A9/%FF");
}

TEST(FileUriConversion, roundTripsEveryByte) {
    std::string path = "/";
    for (int byte = 1; byte < 256; ++byte) {
        path += static_cast<char>(byte);
    }
    path += "end";
    const FileURL url(path);
    EXPECT_EQ(fileUrlFromUri(uriFromFileUrl(url)), url);
    EXPECT_EQ(uriFromFileUrl(url).find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                    "abcdefghijklmnopqrstuvwxyz-._~%:/"),
              std::string::npos);
}

TEST(FileUriConversion, decodesEveryEncodedByte) {
    constexpr std::string_view digits = "0123456789abcdef";
    for (unsigned byte = 1; byte < 256; ++byte) {
        const std::string encoded = {'%', digits[byte / 16], digits[byte % 16]};
        const std::string expected = std::string("/x") + static_cast<char>(byte) + "y";
        EXPECT_EQ(fileUrlFromUri("file:///x" + encoded + "y"), FileURL(expected)) << encoded;
    }
}

TEST(FileUriConversion, acceptsTheSchemeCaseInsensitively) {
    EXPECT_EQ(fileUrlFromUri("FILE:///a"), FileURL("/a"));
    EXPECT_EQ(fileUrlFromUri("File:/a/b"), FileURL("/a/b"));
    EXPECT_TRUE(hasFileScheme("fIlE:x"));
    EXPECT_FALSE(hasFileScheme("files:///x"));
    EXPECT_FALSE(hasFileScheme("file"));
    EXPECT_FALSE(hasFileScheme(""));
}

TEST(FileUriConversion, acceptsOnlyTheLocalHost) {
    std::array<char, 256> host{};
    ASSERT_EQ(::gethostname(host.data(), host.size() - 1), 0);
    EXPECT_EQ(fileUrlFromUri("file://localhost/a"), FileURL("/a"));
    EXPECT_EQ(fileUrlFromUri("file://LocalHost/a"), FileURL("/a"));
    EXPECT_EQ(fileUrlFromUri(std::string("file://") + host.data() + "/a"), FileURL("/a"));
    EXPECT_EQ(fileUrlFromUri("file://another.example/a"), none);
    EXPECT_EQ(fileUrlFromUri(std::string("file://") + host.data() + "x/a"), none);
}

TEST(FileUriConversion, rejectsUrisWithoutAnAbsolutePath) {
    for (const char* uri : {"", "file:", "file:a", "file:a/b", "file://", "file://localhost",
                            "file:%2Fa", "http://localhost/a", "/a", "://a", "mailto:/a"}) {
        EXPECT_EQ(fileUrlFromUri(uri), none) << uri;
    }
}

TEST(FileUriConversion, rejectsNulBytes) {
    using namespace std::string_view_literals;
    EXPECT_EQ(fileUrlFromUri("file:///a%00b"), none);
    EXPECT_EQ(fileUrlFromUri("file:///a%00"), none);
    EXPECT_EQ(fileUrlFromUri("file:///a\0b"sv), none);
}

TEST(FileUriConversion, keepsUnencodedBytes) {
    EXPECT_EQ(fileUrlFromUri("file:///50%"), FileURL("/50%"));
    EXPECT_EQ(fileUrlFromUri("file:///50%2"), FileURL("/50%2"));
    EXPECT_EQ(fileUrlFromUri("file:///50%zz%-1%+1% 1"), FileURL("/50%zz%-1%+1% 1"));
    EXPECT_EQ(fileUrlFromUri("file:///a?b#c d\xFF"), FileURL("/a?b#c d\xFF"));
    EXPECT_EQ(fileUrlFromUri("file:///%2541"), FileURL("/%41"));
}

TEST(FileUriConversion, dropsATrailingSlash) {
    EXPECT_EQ(fileUrlFromUri("file:///music/"), FileURL("/music"));
    EXPECT_EQ(fileUrlFromUri("file:///"), FileURL("/"));
}

} // namespace
} // namespace kestrel::test
