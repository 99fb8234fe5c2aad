#include "FileURL.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace kestrel {
namespace {

using namespace std::string_literals;

TEST(FileURL, splitsItsPath) {
    const std::tuple<const char*, const char*, const char*, const char*, const char*> rows[] = {
        // path, folder, last component, extension, base name
        {"/a/b/track.opus", "/a/b", "track.opus", "opus", "track"},
        {"/a/b/a.b.ogg", "/a/b", "a.b.ogg", "ogg", "a.b"},
        {"/a/song.opus.bak", "/a", "song.opus.bak", "bak", "song.opus"},
        {"/a/song", "/a", "song", "", "song"},
        {"/a.opus/song", "/a.opus", "song", "", "song"},
        {"/a/.opus", "/a", ".opus", "opus", ""},
        {"/a/song.", "/a", "song.", "", "song."},
        {"/a/..opus", "/a", "..opus", "opus", "."},
        {"/song.ogg", "/", "song.ogg", "ogg", "song"},
        {"/", "/", "/", "", "/"},
    };
    for (const auto& [path, folder, last, extension, base] : rows) {
        const FileURL url{std::string(path)};
        EXPECT_EQ(url.path(), path);
        EXPECT_EQ(url.deletingLastPathComponent().path(), folder) << path;
        EXPECT_EQ(url.lastPathComponent(), last) << path;
        EXPECT_EQ(url.pathExtension(), extension) << path;
        EXPECT_EQ(url.baseName(), base) << path;
    }
}

TEST(FileURL, dropsATrailingSlash) {
    EXPECT_EQ(FileURL("/a/b/"), FileURL("/a/b"));
    EXPECT_EQ(FileURL("/a//").path(), "/a");
    EXPECT_EQ(FileURL("///").path(), "/");
}

TEST(FileURL, appendsComponentsAndExtensions) {
    EXPECT_EQ(FileURL("/a").appendingPathComponent("b c").path(), "/a/b c");
    EXPECT_EQ(FileURL("/").appendingPathComponent("b").path(), "/b");
    EXPECT_EQ(FileURL("/a/b").appendingPathExtension("mp3").path(), "/a/b.mp3");
    EXPECT_EQ(FileURL("/a/b.c").appendingPathExtension("mp3").path(), "/a/b.c.mp3");
}

TEST(FileURL, keepsEveryByteOfItsPath) {
    std::string path = "/";
    for (int byte = 1; byte < 256; ++byte) {
        path += static_cast<char>(byte);
    }
    path += ".opus";
    EXPECT_EQ(FileURL(path).path(), path);
    EXPECT_EQ(FileURL(path).pathExtension(), "opus");
    EXPECT_EQ(FileURL("/a\xff/\xfe").standardized().path(), "/a\xff/\xfe");
}

TEST(FileURL, resolvesDotComponentsLexically) {
    const std::pair<const char*, const char*> rows[] = {{"/a/b/track.opus", "/a/b/track.opus"},
                                                        {"/a/./b/track.opus", "/a/b/track.opus"},
                                                        {"/a/c/../b/track.opus", "/a/b/track.opus"},
                                                        {"/a//b///track.opus", "/a/b/track.opus"},
                                                        {"/../../track.opus", "/track.opus"},
                                                        {"/a/..", "/"},
                                                        {"/a/b/..", "/a"},
                                                        {"/.", "/"},
                                                        {"/", "/"},
                                                        {"/a/.../b", "/a/.../b"},
                                                        {"/a/.b/..c", "/a/.b/..c"},
                                                        {"/a/b/../../../c", "/c"}};
    for (const auto& [path, standard] : rows) {
        const FileURL url{std::string(path)};
        EXPECT_EQ(url.standardized().path(), standard) << path;
        EXPECT_EQ(url.isStandardized(), url == url.standardized()) << path;
    }
}

TEST(FileURL, comparesBytesWithoutNormalising) {
    EXPECT_NE(FileURL("/a/./b"), FileURL("/a/b"));
    EXPECT_NE(FileURL("/a/B"), FileURL("/a/b"));
}

TEST(FileURL, hashesTheWholePath) {
    std::unordered_set<std::size_t> hashes;
    for (int i = 0; i < 1000; ++i) {
        const std::string number = std::to_string(i);
        hashes.insert(std::hash<FileURL>()(FileURL("/music/track " + number)));
        hashes.insert(std::hash<FileURL>()(FileURL("/" + number + "/track.opus")));
    }
    EXPECT_GE(hashes.size(), 1990U);
    EXPECT_EQ(std::hash<FileURL>()(FileURL("/a/b/")), std::hash<FileURL>()(FileURL("/a/b")));
}

TEST(FileURLDeathTest, mustBeAbsoluteAndFreeOfNulBytes) {
    EXPECT_DEATH(FileURL("a/b"), "absolute path");
    EXPECT_DEATH(FileURL(""), "absolute path");
    EXPECT_DEATH(FileURL("/a\0b"s), "absolute path");
}

} // namespace
} // namespace kestrel
