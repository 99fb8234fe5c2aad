#include "FileSystem.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

namespace kestrel {

TEST(FileSystem, tellsFilesFromFolders) {
    const TempFolder temp;
    const FileURL file = temp.addFile("track.opus");
    const FileURL folder = temp.addFolder("folder.opus");
    EXPECT_TRUE(fileExists(file));
    EXPECT_FALSE(isFolder(file));
    EXPECT_TRUE(fileExists(folder));
    EXPECT_TRUE(isFolder(folder));
    EXPECT_TRUE(isFolder(FileURL("/")));
}

TEST(FileSystem, findsNothingAtAMissingPath) {
    const TempFolder temp;
    temp.addFile("track.opus");
    EXPECT_FALSE(fileExists(temp.url("missing")));
    EXPECT_FALSE(isFolder(temp.url("missing")));
    EXPECT_FALSE(fileExists(temp.url("track.opus/below")));
    EXPECT_FALSE(fileExists(temp.url(std::string(5000, 'x'))));
}

TEST(FileSystem, takesALinkForWhatItLeadsTo) {
    const TempFolder temp;
    temp.addFile("track.opus");
    temp.addFolder("folder");
    temp.addLink("to-file", "track.opus");
    temp.addLink("to-folder", "folder");
    temp.addLink("dangling", "missing");
    temp.addLink("loop", "loop");
    EXPECT_TRUE(fileExists(temp.url("to-file")));
    EXPECT_FALSE(isFolder(temp.url("to-file")));
    EXPECT_TRUE(isFolder(temp.url("to-folder")));
    EXPECT_FALSE(fileExists(temp.url("dangling")));
    EXPECT_FALSE(fileExists(temp.url("loop")));
    EXPECT_FALSE(isFolder(temp.url("loop")));
}

TEST(FileSystem, findsNamesThatAreNotUtf8) {
    const TempFolder temp;
    EXPECT_TRUE(fileExists(temp.addFile("caf\xE9.opus")));
    EXPECT_TRUE(isFolder(temp.addFolder("\xFF\xFE")));
}

} // namespace kestrel
