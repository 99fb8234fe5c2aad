#include "JobRowHeights.h"

#include "DisplayText.h"
#include "ElidedLabel.h"
#include "JobRow.h"
#include "JobState.h"

#include <bit>
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
    measured_.clear();
}

// Defined before the loops over all jobs, so that it is inlined into them.
inline int JobRowHeights::heightOf(const ConversionJob& job) const {
    return job.state.is(JobState::Case::failed) ? heightOfFailure(job) : metrics_->plainHeight;
}

void JobRowHeights::update(const std::vector<ConversionJob>& jobs) {
    if (jobs.size() != offsets_.count()) {
        rebuild(jobs);
        return;
    }
    // `setHeight` takes O(log n) steps, rebuilding O(n).
    const auto digits = static_cast<std::size_t>(std::bit_width(jobs.size()));
    const std::size_t maxChanges = jobs.size() / (digits + 1);
    std::vector<std::pair<std::size_t, int>> changes;
    const int* before = offsets_.heights().data();
    for (const ConversionJob& job : jobs) {
        const int height = heightOf(job);
        if (height != *before) {
            if (changes.size() == maxChanges) {
                rebuild(jobs);
                return;
            }
            changes.emplace_back(before - offsets_.heights().data(), height);
        }
        ++before;
    }
    for (const auto& [row, height] : changes) {
        offsets_.setHeight(row, height);
    }
}

void JobRowHeights::rebuild(const std::vector<ConversionJob>& jobs) {
    // Bounds the measurements kept of jobs that were removed.
    constexpr std::size_t spare = 1000;
    if (measured_.size() > 2 * jobs.size() + spare) {
        measured_.clear();
    }
    std::vector<int> heights;
    heights.reserve(jobs.size());
    for (const ConversionJob& job : jobs) {
        heights.push_back(heightOf(job));
    }
    offsets_.assign(std::move(heights));
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
