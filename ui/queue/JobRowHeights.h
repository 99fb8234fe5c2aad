#pragma once

#include "ConversionJob.h"
#include "JobRowMetrics.h"
#include "QueueChanges.h"
#include "RowOffsets.h"
#include "UUID.h"

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace kestrel {

/// The heights and offsets of a queue's rows. Failure messages are measured on demand; until then a
/// row's height is estimated with the maximum number of message lines.
class JobRowHeights {
  public:
    /// Null until `setMetrics`.
    const std::optional<JobRowMetrics>& metrics() const noexcept { return metrics_; }

    /// Sets the metrics of another width or font and discards all measurements.
    void setMetrics(JobRowMetrics metrics);

    /// Sets the rows to those of these jobs, given all changes since the last call but the jobs
    /// added at the end: O(log n) for each, O(n) for a removal or after `setMetrics`. Requires:
    /// `setMetrics` has been called, or there are no jobs.
    void update(const std::vector<ConversionJob>& jobs, const QueueChanges& changes);

    /// Returns true iff the height of the job's row is measured, not estimated.
    bool isKnown(const ConversionJob& job) const;

    /// Measures the job's row; returns true iff that changes its height.
    bool measure(std::size_t row, const ConversionJob& job);

    const RowOffsets& offsets() const noexcept { return offsets_; }

    /// How many messages have been measured so far.
    std::size_t measuredCount() const noexcept { return measuredCount_; }

  private:
    struct MeasuredMessage {
        std::size_t hash;
        int lines;
    };

    const MeasuredMessage* findMeasured(const ConversionJob& job) const;
    int heightOf(const ConversionJob& job) const;
    int heightOfFailure(const ConversionJob& job) const;
    void rebuild(const std::vector<ConversionJob>& jobs);
    /// Bounds the measurements kept of jobs that were removed. Returns true iff it discards all.
    bool limitMeasurements(std::size_t jobCount);

    std::optional<JobRowMetrics> metrics_;
    bool isRebuildDue_ = false;
    RowOffsets offsets_;
    std::unordered_map<UUID, MeasuredMessage> measured_;
    std::size_t measuredCount_ = 0;
};

} // namespace kestrel
