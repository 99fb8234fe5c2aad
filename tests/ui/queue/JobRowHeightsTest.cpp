#include "JobRowHeights.h"

#include <gtest/gtest.h>

#include <cstddef>
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
        update();
    }

    void setState(std::size_t row, const JobState& state) {
        jobs_[row].state = state;
        changes_.addChange(row);
    }

    void remove(std::size_t row) {
        jobs_.erase(jobs_.begin() + static_cast<std::ptrdiff_t>(row));
        changes_.addRemoval(row);
    }

    void update() {
        heights_.update(jobs_, changes_);
        changes_ = {};
    }

    JobRowHeights heights_;
    std::vector<ConversionJob> jobs_;
    QueueChanges changes_;
};

TEST_F(JobRowHeightsTest, followTheStates) {
    queue(100, JobState::waiting());
    EXPECT_EQ(heights_.offsets().total(), 5000);
    setState(7, JobState::converting());
    setState(9, JobState::failed("one\ntwo"));
    update();
    EXPECT_EQ(heights_.offsets().height(7), 50);
    EXPECT_EQ(heights_.offsets().height(9), 80);
    EXPECT_EQ(heights_.offsets().total(), 5030);
    for (std::size_t row = 0; row < jobs_.size(); ++row) {
        setState(row, JobState::converting());
    }
    update();
    EXPECT_EQ(heights_.offsets().total(), 5000);
    while (jobs_.size() > 3) {
        remove(jobs_.size() - 1);
    }
    update();
    EXPECT_EQ(heights_.offsets().total(), 150);
}

TEST_F(JobRowHeightsTest, followAQueueThatChangesInManyWaysAtOnce) {
    queue(5, JobState::waiting());
    setState(1, JobState::failed("no"));
    setState(3, JobState::failed("no"));
    setState(4, JobState::failed("no"));
    remove(1);
    remove(0);
    jobs_.emplace_back(FileURL("/Album/new.opus"));
    jobs_.emplace_back(FileURL("/Album/gone.opus"));
    setState(3, JobState::failed("no"));
    remove(4);
    update();
    // The rows 2, 3 and 4, and the new one.
    ASSERT_EQ(heights_.offsets().count(), 4U);
    EXPECT_EQ(heights_.offsets().height(0), 50);
    EXPECT_EQ(heights_.offsets().height(1), 80);
    EXPECT_EQ(heights_.offsets().height(2), 80);
    EXPECT_EQ(heights_.offsets().height(3), 80);
    EXPECT_EQ(heights_.offsets().total(), 290);
}

TEST_F(JobRowHeightsTest, readNoJobThatHasNotChanged) {
    queue(3, JobState::waiting());
    jobs_[1].state = JobState::failed("no");
    update();
    EXPECT_EQ(heights_.offsets().height(1), 50);
    changes_.addChange(1);
    update();
    EXPECT_EQ(heights_.offsets().height(1), 80);
}

TEST_F(JobRowHeightsTest, areThoseOfOtherMetricsAfterTheNextUpdate) {
    queue(3, JobState::waiting());
    JobRowMetrics taller = metrics();
    taller.plainHeight = 60;
    heights_.setMetrics(taller);
    update();
    EXPECT_EQ(heights_.offsets().total(), 180);
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
    update();
    EXPECT_FALSE(heights_.measure(1, jobs_[1]));
    EXPECT_EQ(heights_.measuredCount(), 1U);
    remove(0);
    update();
    EXPECT_EQ(heights_.offsets().height(0), 70);
    heights_.setMetrics(metrics());
    EXPECT_FALSE(heights_.isKnown(jobs_[0]));
}

TEST_F(JobRowHeightsTest, remeasureAChangedMessage) {
    queue(1, JobState::failed("short"));
    heights_.measure(0, jobs_[0]);
    setState(0, JobState::failed("one\ntwo"));
    update();
    EXPECT_FALSE(heights_.isKnown(jobs_[0]));
    EXPECT_EQ(heights_.offsets().height(0), 80);
    EXPECT_FALSE(heights_.measure(0, jobs_[0]));
    EXPECT_EQ(heights_.measuredCount(), 2U);
}

TEST_F(JobRowHeightsTest, keepsMeasurementsOfAThousandRemovedJobsAndTwicePerQueuedOne) {
    for (const int excess : {0, 1}) {
        while (!jobs_.empty()) {
            remove(jobs_.size() - 1);
        }
        heights_.setMetrics(metrics());
        constexpr std::size_t queued = 100;
        queue(1000 + 2 * static_cast<int>(queued) + excess, JobState::failed("short"));
        for (std::size_t row = 0; row < jobs_.size(); ++row) {
            heights_.measure(row, jobs_[row]);
        }
        while (jobs_.size() > queued) {
            remove(jobs_.size() - 1);
        }
        update();
        EXPECT_EQ(heights_.isKnown(jobs_.front()), excess == 0);
        EXPECT_EQ(heights_.offsets().height(0), excess == 0 ? 70 : 80);
    }
}

} // namespace
} // namespace kestrel
