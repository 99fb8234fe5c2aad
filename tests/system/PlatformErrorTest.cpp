#include "PlatformError.h"

#include <gmock/gmock.h>

#include <system_error>

namespace kestrel {
namespace {

using ::testing::HasSubstr;

TEST(PlatformError, messageNamesThePathAndTheReason) {
    const auto denied = std::make_error_code(std::errc::permission_denied);
    const FileURL folder("/music/new %1");
    EXPECT_STREQ(PlatformError::folderNotCreated(folder, denied).what(),
                 "The folder “/music/new %1” could not be created: Permission denied.");
    EXPECT_STREQ(PlatformError::programNotStarted(folder, denied).what(),
                 "The program “/music/new %1” could not be started: Permission denied.");
    EXPECT_STREQ(PlatformError::programLost(folder, denied).what(),
                 "The connection to the program “/music/new %1” was lost: Permission denied.");
    EXPECT_EQ(PlatformError::folderNotCreated(folder, denied).code(), denied);
}

TEST(PlatformError, replacesInvalidUtf8InPaths) {
    const auto denied = std::make_error_code(std::errc::permission_denied);
    EXPECT_THAT(PlatformError::folderNotCreated(FileURL("/a\xff"), denied).what(),
                HasSubstr("“/a\xef\xbf\xbd”"));
}

} // namespace
} // namespace kestrel
