#include "ConversionJob.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrel {
namespace {

const FileURL track("/music/track.opus");

TEST(ConversionJob, startsWaitingWithoutProgressOrDuration) {
    const ConversionJob job(track);
    EXPECT_EQ(job.source(), track);
    EXPECT_FALSE(job.duration);
    EXPECT_EQ(job.progress, 0.0);
    EXPECT_EQ(job.state, JobState::waiting());
}

TEST(ConversionJob, differsFromAnotherJobForTheSameFile) {
    EXPECT_NE(ConversionJob(track), ConversionJob(track));
}

TEST(ConversionJob, equalsItsCopyUntilOneFieldChanges) {
    ConversionJob job(track);
    job.progress = 0.5;
    ConversionJob copy = job;
    EXPECT_EQ(copy, job);
    copy.progress = 0.6;
    EXPECT_NE(copy, job);
    copy = job;
    copy.state = JobState::converting();
    EXPECT_NE(copy, job);
}

TEST(ConversionJob, distinguishesNoDurationFromZero) {
    const ConversionJob job(track);
    ConversionJob copy = job;
    copy.duration = 0.0;
    EXPECT_NE(copy, job);
}

TEST(ConversionJob, isNotEqualToItselfWithNaN) {
    ConversionJob job(track);
    job.progress = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(job == job);
    job.progress = 0;
    job.duration = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(job == job);
}

} // namespace
} // namespace kestrel
