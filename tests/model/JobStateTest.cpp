#include "JobState.h"

#include <gtest/gtest.h>

#include <utility>

namespace kestrel {
namespace {

TEST(JobState, comparesFailuresByTheirMessages) {
    EXPECT_EQ(JobState::failed("a"), JobState::failed("a"));
    EXPECT_NE(JobState::failed("a"), JobState::failed("b"));
    EXPECT_NE(JobState::failed("a"), JobState::cancelled());
    EXPECT_NE(JobState::failed(""), JobState::waiting());
}

TEST(JobState, keepsItsMessageWhenTheOriginalChanges) {
    JobState first = JobState::failed("a");
    const JobState copy = first;
    first = JobState::failed("b");
    EXPECT_EQ(copy.message(), "a");
    first = JobState::waiting();
    EXPECT_EQ(copy.message(), "a");
    EXPECT_EQ(first.message(), "");
    const JobState moved = std::move(first);
    EXPECT_EQ(moved, JobState::waiting());
}

TEST(JobState, distinguishesCases) {
    const JobState states[] = {JobState::failed(""), JobState::waiting(), JobState::converting(),
                               JobState::completed(), JobState::cancelled()};
    for (const JobState& a : states) {
        for (const JobState& b : states) {
            EXPECT_EQ(a == b, &a == &b);
        }
    }
}

} // namespace
} // namespace kestrel
