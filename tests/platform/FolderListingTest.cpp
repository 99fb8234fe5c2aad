#include "FolderListing.h"

#include "ChildProbe.h"
#include "DescriptorCount.h"
#include "TempFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace kestrel {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The paths of a listing, as they go on from the folder that was listed.
std::vector<std::string> listedPaths(const FileURL& folder) {
    std::vector<std::string> result;
    for (const FileURL& url : listFolder(folder)) {
        EXPECT_EQ(url.path().substr(0, folder.path().size() + 1), folder.path() + "/");
        result.push_back(url.path().substr(folder.path().size() + 1));
    }
    return result;
}

/// Makes a chain of folders of this name, one in the other, however long the path becomes.
void addChain(const FileURL& folder, const std::string& name, int depth) {
    int parent = ::open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(::mkdirat(parent, name.c_str(), 0755), 0);
        const int child = ::openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ASSERT_GE(child, 0);
        ::close(parent);
        parent = child;
    }
    ::close(parent);
}

} // namespace

TEST(FolderListing, listsEveryDepthInTheOrderOfBytes) {
    const TempFolder temp;
    for (const char* name :
         {"b.opus", "B.opus", "a/z.opus", "a/b/deep.ogg", "a/b.oga", "\xC3\xA4"}) {
        temp.addFile(name);
    }
    temp.addFolder("empty");
    EXPECT_THAT(listedPaths(temp.url()),
                ElementsAre("B.opus", "a", "a/b", "a/b/deep.ogg", "a/b.oga", "a/z.opus", "b.opus",
                            "empty", "\xC3\xA4"));
}

TEST(FolderListing, putsAFoldersContentsRightAfterTheFolder) {
    const TempFolder temp;
    // "a b" and "a.opus" sort before "a/" where whole paths are compared.
    for (const char* name : {"a/1", "a b/1", "a.opus"}) {
        temp.addFile(name);
    }
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("a", "a/1", "a b", "a b/1", "a.opus"));
}

TEST(FolderListing, leavesOutHiddenEntriesWithAllTheyHold) {
    const TempFolder temp;
    for (const char* name : {".hidden.opus", ".folder/inside.opus", "seen/.hidden.opus", "seen/..x",
                             "seen/track.opus"}) {
        temp.addFile(name);
    }
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("seen", "seen/track.opus"));
}

TEST(FolderListing, listsAHiddenFolderThatItIsGiven) {
    const TempFolder temp;
    temp.addFile(".folder/track.opus");
    EXPECT_THAT(listedPaths(temp.url(".folder")), ElementsAre("track.opus"));
}

TEST(FolderListing, listsPackagesWithoutEnteringThem) {
    const TempFolder temp;
    for (const char* name : {"Player.app/Contents/a.opus", "Song.LogicX/b.opus", "app/c.opus"}) {
        temp.addFile(name);
    }
    temp.addFile("file.app");
    EXPECT_THAT(listedPaths(temp.url()),
                ElementsAre("Player.app", "Song.LogicX", "app", "app/c.opus", "file.app"));
}

TEST(FolderListing, listsAPackageThatItIsGiven) {
    const TempFolder temp;
    temp.addFile("Player.app/a.opus");
    EXPECT_THAT(listedPaths(temp.url("Player.app")), ElementsAre("a.opus"));
}

TEST(FolderListing, entersFoldersThatAreNamedLikeTracks) {
    const TempFolder temp;
    temp.addFile("x.ogg/y.opus");
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("x.ogg", "x.ogg/y.opus"));
}

TEST(FolderListing, listsLinksWithoutFollowingThem) {
    const TempFolder temp;
    const TempFolder elsewhere;
    elsewhere.addFile("outside.opus");
    temp.addFile("folder/track.opus");
    temp.addLink("dangling.opus", "missing");
    temp.addLink("folder/up", "..");
    temp.addLink("loop", "loop");
    temp.addLink("outside", elsewhere.path());
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("dangling.opus", "folder", "folder/track.opus",
                                                     "folder/up", "loop", "outside"));
}

TEST(FolderListing, followsTheGivenFolderWhereItIsALink) {
    const TempFolder temp;
    temp.addFile("folder/track.opus");
    temp.addLink("link", "folder");
    EXPECT_THAT(listedPaths(temp.url("link")), ElementsAre("track.opus"));
}

TEST(FolderListing, isEmptyForWhatIsNoFolder) {
    const TempFolder temp;
    temp.addLink("loop", "loop");
    EXPECT_THAT(listFolder(temp.url("missing")), IsEmpty());
    EXPECT_THAT(listFolder(temp.url("loop")), IsEmpty());
    EXPECT_THAT(listFolder(temp.addFile("track.opus")), IsEmpty());
    EXPECT_THAT(listFolder(temp.addFolder("empty")), IsEmpty());
}

TEST(FolderListing, keepsTheBytesOfNames) {
    const TempFolder temp;
    const std::vector<std::string> names = {
        " ", "#1 50% off?.opus", "-i.opus", "caf\xE9/\xFF\xFE.opus", "line\nend.opus", "tab\t:;&*"};
    for (const std::string& name : names) {
        temp.addFile(name);
    }
    EXPECT_THAT(listedPaths(temp.url()),
                ElementsAre(" ", "#1 50% off?.opus", "-i.opus", "caf\xE9", "caf\xE9/\xFF\xFE.opus",
                            "line\nend.opus", "tab\t:;&*"));
}

TEST(FolderListing, listsPipesWithoutOpeningThem) {
    const TempFolder temp;
    ASSERT_EQ(::mkfifo(temp.url("pipe.opus").path().c_str(), 0644), 0);
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("pipe.opus"));
}

TEST(FolderListing, goesOnAfterASubfolderThatMayNotBeRead) {
    const TempFolder temp;
    temp.addFile("a/secret.opus");
    temp.addFile("b/track.opus");
    std::filesystem::permissions(temp.url("a").path(), std::filesystem::perms::none);
    // The superuser may read anything, so the listing is made by a user who is not.
    const int status = runInChild([&] {
        if (!dropPrivileges() || ::access(temp.url("a").path().c_str(), R_OK) == 0) {
            return 2;
        }
        return listedPaths(temp.url()) == std::vector<std::string>{"a", "b", "b/track.opus"} &&
                       listFolder(temp.url("a")).empty()
                   ? 0
                   : 1;
    });
    std::filesystem::permissions(temp.url("a").path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(status, 0);
}

TEST(FolderListing, goesOnAfterAPathThatIsTooLongToOpen) {
    const TempFolder temp;
    const std::string longName(250, 'a');
    addChain(temp.url(), longName, 20);
    temp.addFile("b.opus");
    const std::vector<FileURL> urls = listFolder(temp.url());
    ASSERT_FALSE(urls.empty());
    EXPECT_EQ(urls.back(), temp.url("b.opus"));
    // The last folder of the chain that can be opened gives one more entry, which cannot.
    const std::size_t openable = (PATH_MAX - 1 - temp.path().size()) / (longName.size() + 1);
    EXPECT_EQ(urls.size(), openable + 1 + 1);
}

TEST(FolderListing, holdsNoDescriptorForEachLevelOfDepth) {
    const TempFolder temp;
    addChain(temp.url(), "d", 300);
    const int status = runInChild([&] {
        const auto limit = static_cast<rlim_t>(descriptorCount() + 2);
        const rlimit limits = {limit, limit};
        return ::setrlimit(RLIMIT_NOFILE, &limits) == 0 && listFolder(temp.url()).size() == 300 ? 0
                                                                                                : 1;
    });
    EXPECT_EQ(status, 0);
}

TEST(FolderListing, leavesNoDescriptorOpen) {
    const TempFolder temp;
    for (int i = 0; i < 50; ++i) {
        temp.addFile("folder " + std::to_string(i) + "/track.opus");
    }
    addChain(temp.url(), std::string(250, 'a'), 20);
    const std::ptrdiff_t before = descriptorCount();
    EXPECT_GT(listFolder(temp.url()).size(), 100U);
    EXPECT_TRUE(listFolder(temp.url("missing")).empty());
    EXPECT_EQ(descriptorCount(), before);
}

TEST(FolderListing, listsAFolderOfManyFiles) {
    const TempFolder temp;
    for (int i = 0; i < 3000; ++i) {
        temp.addFile(std::to_string(i) + ".opus");
    }
    const std::vector<std::string> paths = listedPaths(temp.url());
    EXPECT_EQ(paths.size(), 3000U);
    EXPECT_TRUE(std::is_sorted(paths.begin(), paths.end()));
}

TEST(PackageName, goesByTheExtensionInEitherCase) {
    for (const char* name : {"a.app", "A.APP", "b.bundle", "c.d.framework", "My Song.band",
                             "Photos Library.photoslibrary", "x.Rtfd", "y.xpc", "z.mpkg"}) {
        EXPECT_TRUE(isPackageName(name)) << name;
    }
    for (const char* name : {"app", "a.appl", "a.app.d", "a.ap", "a.", "", ".", "a app", "Vol. 1",
                             "x.ogg", "blues in a.key"}) {
        EXPECT_FALSE(isPackageName(name)) << name;
    }
}

} // namespace kestrel
