#include "FileSystem.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string>

namespace kestrel::test {
namespace {

TEST(FileSystem, distinguishesFilesFromFolders) {
    const TemporaryFolder temp;
    const FileURL file = temp.write("track.opus");
    const FileURL folder = temp.makeFolder("folder.opus");
    EXPECT_TRUE(fileExists(file));
    EXPECT_FALSE(isFolder(file));
    EXPECT_TRUE(fileExists(folder));
    EXPECT_TRUE(isFolder(folder));
    EXPECT_TRUE(isFolder(FileURL("/")));
}

TEST(FileSystem, supports64BitSizesAndDates) {
    const TemporaryFolder temp;
    const FileURL large = temp.write("large.wav");
    ASSERT_EQ(::truncate(large.path().c_str(), 5'000'000'000), 0);
    EXPECT_TRUE(fileExists(large));
    const FileURL file = temp.write("2040.opus");
    const FileURL folder = temp.makeFolder("2040");
    const timespec date{.tv_sec = 2'208'988'800, .tv_nsec = 0};
    const std::array dates{date, date};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.path().c_str(), dates.data(), 0), 0);
    ASSERT_EQ(::utimensat(AT_FDCWD, folder.path().c_str(), dates.data(), 0), 0);
    EXPECT_TRUE(fileExists(file));
    EXPECT_TRUE(isFolder(folder));
}

TEST(FileSystem, findsNothingAtAMissingPath) {
    const TemporaryFolder temp;
    temp.write("track.opus");
    EXPECT_FALSE(fileExists(temp.file("missing")));
    EXPECT_FALSE(isFolder(temp.file("missing")));
    EXPECT_FALSE(fileExists(temp.file("track.opus/below")));
    EXPECT_FALSE(fileExists(temp.file(std::string(5000, 'x'))));
}

TEST(FileSystem, followsSymbolicLinks) {
    const TemporaryFolder temp;
    temp.write("track.opus");
    temp.makeFolder("folder");
    temp.makeLink("to-file", "track.opus");
    temp.makeLink("to-folder", "folder");
    temp.makeLink("dangling", "missing");
    temp.makeLink("loop", "loop");
    EXPECT_TRUE(fileExists(temp.file("to-file")));
    EXPECT_FALSE(isFolder(temp.file("to-file")));
    EXPECT_TRUE(isFolder(temp.file("to-folder")));
    EXPECT_FALSE(fileExists(temp.file("dangling")));
    EXPECT_FALSE(fileExists(temp.file("loop")));
    EXPECT_FALSE(isFolder(temp.file("loop")));
}

TEST(FileSystem, findsNamesThatAreNotUtf8) {
    const TemporaryFolder temp;
    EXPECT_TRUE(fileExists(temp.write("caf\xE9.opus")));
    EXPECT_TRUE(isFolder(temp.makeFolder("\xFF\xFE")));
}

TEST(FileSystem, createsAFolderWithItsMissingParents) {
    const TemporaryFolder temp;
    EXPECT_FALSE(createFolders(temp.file("a/b/c")));
    EXPECT_TRUE(isFolder(temp.file("a/b/c")));
    EXPECT_FALSE(createFolders(temp.file("a/b/c")));
    temp.write("track.opus");
    EXPECT_EQ(createFolders(temp.file("track.opus/a")), std::errc::not_a_directory);
    // A parent that cannot be created: no folder can be in /proc.
    EXPECT_TRUE(createFolders(FileURL("/proc/no-such-parent/folder")));
}

} // namespace
} // namespace kestrel::test
