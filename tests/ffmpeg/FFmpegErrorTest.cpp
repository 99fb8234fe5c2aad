#include "FFmpegError.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

TEST(FFmpegError, hasAMessageForTheUser) {
    EXPECT_EQ(FFmpegError::processFailed("No such file").errorDescription(), "No such file");
    EXPECT_EQ(FFmpegError::processFailed("").errorDescription(),
              "FFmpeg could not convert this file.");
    EXPECT_EQ(FFmpegError::notFound().errorDescription(),
              "FFmpeg was not found. Install it with Homebrew: brew install ffmpeg");
    EXPECT_EQ(FFmpegError::cancelled().errorDescription(), "Conversion cancelled.");
    EXPECT_STREQ(FFmpegError::cancelled().what(), "Conversion cancelled.");
}

TEST(FFmpegError, distinguishesCases) {
    EXPECT_EQ(FFmpegError::processFailed("").which(), FFmpegError::Case::processFailed);
    EXPECT_EQ(FFmpegError::notFound().which(), FFmpegError::Case::notFound);
    EXPECT_EQ(FFmpegError::cancelled().which(), FFmpegError::Case::cancelled);
    EXPECT_NE(FFmpegError::processFailed("a"), FFmpegError::processFailed("b"));
    EXPECT_NE(FFmpegError::processFailed("Conversion cancelled."), FFmpegError::cancelled());
}

} // namespace
} // namespace kestrel
