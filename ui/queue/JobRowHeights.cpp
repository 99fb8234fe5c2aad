#include "JobRowHeights.h"

#include "DisplayText.h"
#include "ElidedLabel.h"
#include "JobRow.h"
#include "JobState.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace kestrel {
namespace {

std::size_t hashOf(std::string_view message) {
    return std::hash<std::string_view>()(message);
}

} // namespace

void JobRowHeights::setMetrics(JobRowMetrics metrics) {
    metrics_ = std::move(metrics);
    isRebuildDue_ = true;
    measured_.clear();
}

// Defined before the loops over all jobs, so that it is inlined into them.
inline int JobRowHeights::heightOf(const ConversionJob& job) const {
    return job.state.is(JobState::Case::failed) ? heightOfFailure(job) : metrics_->plainHeight;
}

void JobRowHeights::update(const std::vector<ConversionJob>& jobs, const QueueChanges& changes) {
    if (limitMeasurements(jobs.size()) || isRebuildDue_) {
        rebuild(jobs);
        return;
    }
    for (const std::size_t row : changes.removed()) {
        // One that was added and removed since the last call has no row yet.
        if (row < offsets_.count()) {
            offsets_.remove(row);
        }
    }
    while (offsets_.count() < jobs.size()) {
        offsets_.append(heightOf(jobs[offsets_.count()]));
    }
    for (const std::size_t row : changes.changed()) {
        offsets_.setHeight(row, heightOf(jobs[row]));
    }
}

void JobRowHeights::rebuild(const std::vector<ConversionJob>& jobs) {
    isRebuildDue_ = false;
    std::vector<int> heights;
    heights.reserve(jobs.size());
    for (const ConversionJob& job : jobs) {
        heights.push_back(heightOf(job));
    }
    offsets_.assign(std::move(heights));
}

bool JobRowHeights::limitMeasurements(std::size_t jobCount) {
    constexpr std::size_t spare = 1000;
    if (measured_.size() <= 2 * jobCount + spare) {
        return false;
    }
    measured_.clear();
    return true;
}

const JobRowHeights::MeasuredMessage* JobRowHeights::findMeasured(const ConversionJob& job) const {
    const auto found = measured_.find(job.id());
    const bool isSame =
        found != measured_.end() && found->second.hash == hashOf(job.state.message());
    return isSame ? &found->second : nullptr;
}

bool JobRowHeights::isKnown(const ConversionJob& job) const {
    return !job.state.is(JobState::Case::failed) || findMeasured(job) != nullptr;
}

int JobRowHeights::heightOfFailure(const ConversionJob& job) const {
    const MeasuredMessage* message = findMeasured(job);
    const int lines = message != nullptr ? message->lines : JobRow::maxMessageLines;
    return metrics_->failedHeight + (lines - 1) * metrics_->messageLineHeight;
}

bool JobRowHeights::measure(std::size_t row, const ConversionJob& job) {
    if (!isKnown(job)) {
        const std::string& message = job.state.message();
        const QStringList lines =
            ElidedLabel::shownLines(displayMessage(message), metrics_->messageFont,
                                    metrics_->messageWidth, JobRow::maxMessageLines);
        measured_.insert_or_assign(
            job.id(), MeasuredMessage{hashOf(message), static_cast<int>(lines.size())});
        ++measuredCount_;
    }
    const int height = heightOf(job);
    if (height == offsets_.height(row)) {
        return false;
    }
    offsets_.setHeight(row, height);
    return true;
}

} // namespace kestrel
