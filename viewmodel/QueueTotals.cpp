#include "QueueTotals.h"

#include <algorithm>
#include <numeric>

namespace kestrel {
namespace {

bool isCompleted(const ConversionJob& job) noexcept {
    return job.state.is(JobState::Case::completed);
}

double countedProgress(const ConversionJob& job) noexcept {
    return isCompleted(job) ? 1.0 : job.progress;
}

} // namespace

void QueueTotals::reserve(std::size_t count) {
    progress_.reserve(count);
    completed_.reserve(count);
}

void QueueTotals::append(const ConversionJob& job) {
    progress_.push_back(countedProgress(job));
    completed_.push_back(isCompleted(job) ? 1 : 0);
}

void QueueTotals::update(std::size_t index, const ConversionJob& job) noexcept {
    progress_[index] = countedProgress(job);
    completed_[index] = isCompleted(job) ? 1 : 0;
}

void QueueTotals::remove(std::size_t index) noexcept {
    const auto offset = static_cast<std::ptrdiff_t>(index);
    progress_.erase(progress_.begin() + offset);
    completed_.erase(completed_.begin() + offset);
}

std::size_t QueueTotals::completedCount() const noexcept {
    return static_cast<std::size_t>(std::count(completed_.begin(), completed_.end(), 1));
}

double QueueTotals::overallProgress() const noexcept {
    if (progress_.empty()) {
        return 0.0;
    }
    const double sum = std::accumulate(progress_.begin(), progress_.end(), 0.0);
    return sum / static_cast<double>(progress_.size());
}

} // namespace kestrel
