#include "ExecutableSearch.h"
#include "FFmpegService.h"
#include "PrivateMounts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace kestrel {
namespace {

using test::PrivateMounts;

constexpr auto executable = static_cast<std::filesystem::perms>(0755);

const std::string first = "/opt/homebrew/bin/ffmpeg";
const std::string second = "/usr/local/bin/ffmpeg";
const std::string third = "/usr/bin/ffmpeg";

void makeExecutable(const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path) << "#!/bin/sh\n";
    std::filesystem::permissions(path, executable);
}

void makePlainFile(const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path) << "not a program";
}

/// Returns what locateBinary() finds after `arrange`. Initially, the first two paths have no file,
/// and the third has one that is not executable.
std::string located(const std::function<void()>& arrange) {
    return PrivateMounts::run([&] {
        PrivateMounts::cover("/opt");
        PrivateMounts::cover("/usr/local/bin");
        PrivateMounts::coverFile(third);
        arrange();
        const auto found = FFmpegService::locateBinary();
        return found ? found->path() : "none";
    });
}

TEST(LocateBinary, findsEachOfTheThreePaths) {
    EXPECT_EQ(located([] { makeExecutable(first); }), first);
    EXPECT_EQ(located([] { makeExecutable(second); }), second);
    EXPECT_EQ(located([] { PrivateMounts::uncoverFile(third); }), third);
}

TEST(LocateBinary, prefersTheEarlierPath) {
    EXPECT_EQ(located([] {
                  makeExecutable(first);
                  makeExecutable(second);
              }),
              first);
    EXPECT_EQ(located([] {
                  makeExecutable(second);
                  PrivateMounts::uncoverFile(third);
              }),
              second);
}

TEST(LocateBinary, skipsWhatIsNotExecutable) {
    EXPECT_EQ(located([] {
                  makePlainFile(first);
                  makeExecutable(second);
              }),
              second);
    EXPECT_EQ(located([] {
                  std::filesystem::create_directories(first);
                  makeExecutable(second);
              }),
              second);
}

TEST(LocateBinary, followsSymbolicLinks) {
    EXPECT_EQ(located([] {
                  makeExecutable("/opt/elsewhere/ffmpeg");
                  std::filesystem::create_directories("/opt/homebrew/bin");
                  std::filesystem::create_symlink("/opt/elsewhere/ffmpeg", first);
              }),
              first);
    EXPECT_EQ(located([] {
                  std::filesystem::create_directories("/opt/homebrew/bin");
                  std::filesystem::create_symlink("/opt/nowhere", first);
              }),
              "none");
}

TEST(LocateBinary, ignoresTheEnvironment) {
    EXPECT_EQ(located([] {
                  makeExecutable("/opt/bin/ffmpeg");
                  ::setenv("PATH", "/opt/bin:/bin", 1);
              }),
              "none");
}

TEST(LocateBinary, doesNotCache) {
    EXPECT_EQ(PrivateMounts::run([] {
                  PrivateMounts::cover("/opt");
                  PrivateMounts::cover("/usr/local/bin");
                  PrivateMounts::coverFile(third);
                  std::string found = FFmpegService::locateBinary() ? "some" : "none";
                  makeExecutable(second);
                  found += FFmpegService::locateBinary() ? ", some" : ", none";
                  std::filesystem::remove(second);
                  return found + (FFmpegService::locateBinary() ? ", some" : ", none");
              }),
              "none, some, none");
}

TEST(FirstExecutable, findsNothingInNoPaths) {
    EXPECT_FALSE(firstExecutable({}));
}

} // namespace
} // namespace kestrel
