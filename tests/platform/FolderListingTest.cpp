#include "FolderListing.h"

#include "ProcessCounts.h"
#include "RunInChild.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The listed paths, relative to the folder.
std::vector<std::string> listedPaths(const FileURL& folder) {
    std::vector<std::string> result;
    for (const FileURL& url : listFolder(folder)) {
        EXPECT_EQ(url.path().substr(0, folder.path().size() + 1), folder.path() + "/");
        result.push_back(url.path().substr(folder.path().size() + 1));
    }
    return result;
}

/// Creates `depth` folders of this name, each inside the last, however long the path becomes.
void addNestedFolders(const FileURL& folder, const std::string& name, int depth) {
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

TEST(FolderListing, listsAllLevelsInByteOrder) {
    const TemporaryFolder temp;
    for (const char* name :
         {"b.opus", "B.opus", "a/z.opus", "a/b/deep.ogg", "a/b.oga", "\xC3\xA4"}) {
        temp.write(name);
    }
    temp.makeFolder("empty");
    EXPECT_THAT(listedPaths(temp.url()),
                ElementsAre("B.opus", "a", "a/b", "a/b/deep.ogg", "a/b.oga", "a/z.opus", "b.opus",
                            "empty", "\xC3\xA4"));
}

TEST(FolderListing, isDepthFirst) {
    const TemporaryFolder temp;
    // In byte order of whole paths, "a b" and "a.opus" would come before "a/1".
    for (const char* name : {"a/1", "a b/1", "a.opus"}) {
        temp.write(name);
    }
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("a", "a/1", "a b", "a b/1", "a.opus"));
}

TEST(FolderListing, skipsHiddenEntriesWithTheirContents) {
    const TemporaryFolder temp;
    for (const char* name : {".hidden.opus", ".folder/inside.opus", "seen/.hidden.opus", "seen/..x",
                             "seen/track.opus"}) {
        temp.write(name);
    }
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("seen", "seen/track.opus"));
}

TEST(FolderListing, listsTheGivenFolderIfItIsHidden) {
    const TemporaryFolder temp;
    temp.write(".folder/track.opus");
    EXPECT_THAT(listedPaths(temp.file(".folder")), ElementsAre("track.opus"));
}

TEST(FolderListing, listsPackagesWithoutEnteringThem) {
    const TemporaryFolder temp;
    for (const char* name : {"Player.app/Contents/a.opus", "Song.LogicX/b.opus", "app/c.opus"}) {
        temp.write(name);
    }
    temp.write("file.app");
    EXPECT_THAT(listedPaths(temp.url()),
                ElementsAre("Player.app", "Song.LogicX", "app", "app/c.opus", "file.app"));
}

TEST(FolderListing, listsTheGivenFolderIfItIsAPackage) {
    const TemporaryFolder temp;
    temp.write("Player.app/a.opus");
    EXPECT_THAT(listedPaths(temp.file("Player.app")), ElementsAre("a.opus"));
}

TEST(FolderListing, entersFoldersWithAnAudioExtension) {
    const TemporaryFolder temp;
    temp.write("x.ogg/y.opus");
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("x.ogg", "x.ogg/y.opus"));
}

TEST(FolderListing, listsLinksWithoutFollowingThem) {
    const TemporaryFolder temp;
    const TemporaryFolder elsewhere;
    elsewhere.write("outside.opus");
    temp.write("folder/track.opus");
    temp.makeLink("dangling.opus", "missing");
    temp.makeLink("folder/up", "..");
    temp.makeLink("loop", "loop");
    temp.makeLink("outside", elsewhere.url().path());
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("dangling.opus", "folder", "folder/track.opus",
                                                     "folder/up", "loop", "outside"));
}

TEST(FolderListing, followsTheGivenFolderIfItIsALink) {
    const TemporaryFolder temp;
    temp.write("folder/track.opus");
    temp.makeLink("link", "folder");
    EXPECT_THAT(listedPaths(temp.file("link")), ElementsAre("track.opus"));
}

TEST(FolderListing, isEmptyForNonFolders) {
    const TemporaryFolder temp;
    temp.makeLink("loop", "loop");
    EXPECT_THAT(listFolder(temp.file("missing")), IsEmpty());
    EXPECT_THAT(listFolder(temp.file("loop")), IsEmpty());
    EXPECT_THAT(listFolder(temp.write("track.opus")), IsEmpty());
    EXPECT_THAT(listFolder(temp.makeFolder("empty")), IsEmpty());
}

TEST(FolderListing, keepsTheBytesOfNames) {
    const TemporaryFolder temp;
    const std::vector<std::string> names = {
        " ", "#1 50% off?.opus", "-i.opus", "caf\xE9/\xFF\xFE.opus", "line\nend.opus", "tab\t:;&*"};
    for (const std::string& name : names) {
        temp.write(name);
    }
    EXPECT_THAT(listedPaths(temp.url()),
                ElementsAre(" ", "#1 50% off?.opus", "-i.opus", "caf\xE9", "caf\xE9/\xFF\xFE.opus",
                            "line\nend.opus", "tab\t:;&*"));
}

TEST(FolderListing, listsFifosWithoutOpeningThem) {
    const TemporaryFolder temp;
    ASSERT_EQ(::mkfifo(temp.file("pipe.opus").path().c_str(), 0644), 0);
    EXPECT_THAT(listedPaths(temp.url()), ElementsAre("pipe.opus"));
}

TEST(FolderListing, opensOnlyFolders) {
    const TemporaryFolder temp;
    temp.write("folder/track.opus");
    ASSERT_EQ(::mkfifo(temp.file("pipe").path().c_str(), 0644), 0);
    const int watcher = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    for (const FileURL& watched : {temp.url(), temp.file("folder")}) {
        ASSERT_GE(::inotify_add_watch(watcher, watched.path().c_str(), IN_OPEN), 0);
    }
    EXPECT_EQ(listFolder(temp.url()).size(), 3U);
    EXPECT_THAT(listFolder(temp.file("pipe")), IsEmpty());
    EXPECT_THAT(listFolder(temp.file("folder/track.opus")), IsEmpty());
    alignas(inotify_event) std::array<char, 4096> events{};
    const ssize_t length = ::read(watcher, events.data(), events.size());
    ::close(watcher);
    ASSERT_GT(length, 0);
    for (ssize_t offset = 0; offset < length;) {
        inotify_event event{};
        std::memcpy(&event, events.data() + offset, sizeof event);
        EXPECT_NE(event.mask & IN_ISDIR, 0U) << events.data() + offset + sizeof event;
        offset += static_cast<ssize_t>(sizeof event + event.len);
    }
}

TEST(FolderListing, startsPathsBelowTheRootWithOneSlash) {
    const TemporaryFolder temp;
    temp.write("a/track.opus");
    const int status = runInChild([&] {
        // chroot requires root or a user namespace.
        if ((::geteuid() != 0 && ::unshare(CLONE_NEWUSER) != 0) ||
            ::chroot(temp.url().path().c_str()) != 0) {
            return 2;
        }
        const std::vector<FileURL> expected{FileURL("/a"), FileURL("/a/track.opus")};
        return listFolder(FileURL("/")) == expected ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

TEST(FolderListing, worksWithStdinClosed) {
    const TemporaryFolder temp;
    temp.write("a/track.opus");
    const int status = runInChild([&] {
        ::close(STDIN_FILENO);
        return listFolder(temp.url()).size() == 2 && ::fcntl(STDIN_FILENO, F_GETFD) < 0 ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

TEST(FolderListing, continuesAfterAnUnreadableSubfolder) {
    const TemporaryFolder temp;
    temp.write("a/secret.opus");
    temp.write("b/track.opus");
    std::filesystem::permissions(temp.file("a").path(), std::filesystem::perms::none);
    // Root may read anything, so the child drops its privileges.
    const int status = runInChild([&] {
        if (!dropPrivileges() || ::access(temp.file("a").path().c_str(), R_OK) == 0) {
            return 2;
        }
        return listedPaths(temp.url()) == std::vector<std::string>{"a", "b", "b/track.opus"} &&
                       listFolder(temp.file("a")).empty()
                   ? 0
                   : 1;
    });
    std::filesystem::permissions(temp.file("a").path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(status, 0);
}

TEST(FolderListing, continuesAfterAPathThatIsTooLongToOpen) {
    const TemporaryFolder temp;
    const std::string longName(250, 'a');
    addNestedFolders(temp.url(), longName, 20);
    temp.write("b.opus");
    const std::vector<FileURL> urls = listFolder(temp.url());
    ASSERT_FALSE(urls.empty());
    EXPECT_EQ(urls.back(), temp.file("b.opus"));
    // The deepest folder that can be opened lists one more, which cannot.
    const std::size_t openable = (PATH_MAX - 1 - temp.url().path().size()) / (longName.size() + 1);
    EXPECT_EQ(urls.size(), openable + 1 + 1);
}

TEST(FolderListing, holdsNoDescriptorForEachLevelOfDepth) {
    const TemporaryFolder temp;
    addNestedFolders(temp.url(), "d", 300);
    const int status = runInChild([&] {
        const auto limit = static_cast<rlim_t>(ProcessCounts::now().descriptors + 2);
        const rlimit limits = {limit, limit};
        return ::setrlimit(RLIMIT_NOFILE, &limits) == 0 && listFolder(temp.url()).size() == 300 ? 0
                                                                                                : 1;
    });
    EXPECT_EQ(status, 0);
}

TEST(FolderListing, leavesNoDescriptorOpen) {
    const TemporaryFolder temp;
    for (int i = 0; i < 50; ++i) {
        temp.write("folder " + std::to_string(i) + "/track.opus");
    }
    addNestedFolders(temp.url(), std::string(250, 'a'), 20);
    const std::size_t before = ProcessCounts::now().descriptors;
    EXPECT_GT(listFolder(temp.url()).size(), 100U);
    EXPECT_TRUE(listFolder(temp.file("missing")).empty());
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
}

TEST(FolderListing, listsAFolderOfManyFiles) {
    const TemporaryFolder temp;
    for (int i = 0; i < 3000; ++i) {
        temp.write(std::to_string(i) + ".opus");
    }
    const std::vector<std::string> paths = listedPaths(temp.url());
    EXPECT_EQ(paths.size(), 3000U);
    EXPECT_TRUE(std::is_sorted(paths.begin(), paths.end()));
}

TEST(PackageName, hasOneOfTheseExtensions) {
    for (const char* extension :
         {"app",           "appex",        "bundle",       "component",
          "framework",     "kext",         "mdimporter",   "plugin",
          "prefpane",      "qlgenerator",  "saver",        "systemextension",
          "vst",           "vst3",         "wdgt",         "xpc",
          "aplibrary",     "band",         "fcpbundle",    "garageband",
          "imovielibrary", "logicx",       "musiclibrary", "photolibrary",
          "photoslibrary", "rtfd",         "scptd",        "tvlibrary",
          "docset",        "dsym",         "mpkg",         "pkg",
          "playground",    "sparsebundle", "xcarchive",    "xcodeproj",
          "xcworkspace"}) {
        EXPECT_TRUE(isPackageName(std::string("a.") + extension)) << extension;
    }
}

TEST(PackageName, isRecognisedByItsExtensionCaseInsensitively) {
    for (const char* name : {"a.app", "A.APP", "b.bundle", "c.d.framework", "My Song.band",
                             "Photos Library.photoslibrary", "x.Rtfd", "y.xpc", "z.mpkg"}) {
        EXPECT_TRUE(isPackageName(name)) << name;
    }
    for (const char* name : {"app", "a.appl", "a.app.d", "a.ap", "a.", "", ".", "a app", "Vol. 1",
                             "x.ogg", "blues in a.key"}) {
        EXPECT_FALSE(isPackageName(name)) << name;
    }
}

} // namespace
} // namespace kestrel::test
