#include "JobRowHeights.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel {
namespace {

class JobRowHeightsTest : public ::testing::Test {
  protected:
    JobRowHeightsTest() { heights_.setMetrics(metrics()); }

    static JobRowMetrics metrics() {
        return {.width = 500,
                .plainHeight = 50,
                .failedHeight = 70,
                .messageLineHeight = 10,
                .messageWidth = 400,
                .messageFont = {}};
    }

    void queue(int count, const JobState& state) {
        for (int number = 0; number < count; ++number) {
            jobs_.emplace_back(FileURL("/Album/" + std::to_string(number) + ".opus"));
            jobs_.back().state = state;
        }
        heights_.update(jobs_);
    }

    JobRowHeights heights_;
    std::vector<ConversionJob> jobs_;
};

TEST_F(JobRowHeightsTest, followTheStates) {
    queue(100, JobState::waiting());
    EXPECT_EQ(heights_.offsets().total(), 5000);
    jobs_[7].state = JobState::converting();
    jobs_[9].state = JobState::failed("one\ntwo");
    heights_.update(jobs_);
    EXPECT_EQ(heights_.offsets().height(7), 50);
    EXPECT_EQ(heights_.offsets().height(9), 80);
    EXPECT_EQ(heights_.offsets().total(), 5030);
    for (ConversionJob& job : jobs_) {
        job.state = JobState::converting();
    }
    heights_.update(jobs_);
    EXPECT_EQ(heights_.offsets().total(), 5000);
    jobs_.resize(3, jobs_.front());
    heights_.update(jobs_);
    EXPECT_EQ(heights_.offsets().total(), 150);
}

TEST_F(JobRowHeightsTest, measureOnDemandOnly) {
    queue(19'000, JobState::failed("short"));
    EXPECT_EQ(heights_.measuredCount(), 0U);
    EXPECT_EQ(heights_.offsets().total(), 19'000 * 80);
    EXPECT_FALSE(heights_.isKnown(jobs_[5]));
    EXPECT_TRUE(heights_.measure(5, jobs_[5]));
    EXPECT_TRUE(heights_.isKnown(jobs_[5]));
    EXPECT_EQ(heights_.offsets().height(5), 70);
    EXPECT_EQ(heights_.measuredCount(), 1U);
}

TEST_F(JobRowHeightsTest, cacheAMeasurementPerWidth) {
    queue(3, JobState::failed("short"));
    heights_.measure(1, jobs_[1]);
    heights_.update(jobs_);
    EXPECT_FALSE(heights_.measure(1, jobs_[1]));
    EXPECT_EQ(heights_.measuredCount(), 1U);
    jobs_.erase(jobs_.begin());
    heights_.update(jobs_);
    EXPECT_EQ(heights_.offsets().height(0), 70);
    heights_.setMetrics(metrics());
    EXPECT_FALSE(heights_.isKnown(jobs_[0]));
}

TEST_F(JobRowHeightsTest, remeasureAChangedMessage) {
    queue(1, JobState::failed("short"));
    heights_.measure(0, jobs_[0]);
    jobs_[0].state = JobState::failed("one\ntwo");
    heights_.update(jobs_);
    EXPECT_FALSE(heights_.isKnown(jobs_[0]));
    EXPECT_EQ(heights_.offsets().height(0), 80);
    EXPECT_FALSE(heights_.measure(0, jobs_[0]));
    EXPECT_EQ(heights_.measuredCount(), 2U);
}

TEST_F(JobRowHeightsTest, keepsMeasurementsOfAThousandRemovedJobsAndTwicePerQueuedOne) {
    for (const int excess : {0, 1}) {
        jobs_.clear();
        heights_.setMetrics(metrics());
        const int queued = 100;
        queue(1000 + 2 * queued + excess, JobState::failed("short"));
        for (std::size_t row = 0; row < jobs_.size(); ++row) {
            heights_.measure(row, jobs_[row]);
        }
        jobs_.erase(jobs_.begin() + queued, jobs_.end());
        heights_.update(jobs_);
        EXPECT_EQ(heights_.isKnown(jobs_.front()), excess == 0);
        EXPECT_EQ(heights_.offsets().height(0), excess == 0 ? 70 : 80);
    }
}

} // namespace
} // namespace kestrel
