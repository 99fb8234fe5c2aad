#pragma once

#include "ConversionJob.h"
#include "JobRowMetrics.h"
#include "RowOffsets.h"
#include "UUID.h"

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace kestrel {

/// How high the rows of a queue are, and so where they lie. Of failure messages only those are
/// measured that somebody asks for; a row with another one is as high as messages get.
class JobRowHeights {
  public:
    /// What the heights are made of; null at first.
    const std::optional<JobRowMetrics>& metrics() const noexcept { return metrics_; }

    /// Takes rows of another width or font, and forgets what was measured.
    void setMetrics(JobRowMetrics metrics);

    /// Takes the rows of these jobs, in one pass over them. Only after `setMetrics`.
    void update(const std::vector<ConversionJob>& jobs);

    /// Whether the height of the job's row is more than an assumption.
    bool isKnown(const ConversionJob& job) const;

    /// Finds out how high the row of this job is; true if it turns out to be another height.
    bool measure(std::size_t row, const ConversionJob& job);

    const RowOffsets& offsets() const noexcept { return offsets_; }

    /// How many messages have been measured so far.
    std::size_t measuredCount() const noexcept { return measuredCount_; }

  private:
    struct MeasuredMessage {
        std::size_t hash;
        int lines;
    };

    const MeasuredMessage* known(const ConversionJob& job) const;
    int heightOf(const ConversionJob& job) const;
    int heightOfFailure(const ConversionJob& job) const;
    void rebuild(const std::vector<ConversionJob>& jobs);

    std::optional<JobRowMetrics> metrics_;
    RowOffsets offsets_;
    std::unordered_map<UUID, MeasuredMessage> measured_;
    std::size_t measuredCount_ = 0;
};

} // namespace kestrel
