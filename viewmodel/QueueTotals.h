#pragma once

#include "ConversionJob.h"

#include <cstddef>
#include <vector>

namespace kestrel {

/// What the derived values are computed from, apart from the jobs: a pass over a long queue is
/// bound by memory, and reads 9 bytes a job here instead of a whole job. Nothing is cached: every
/// value is computed on every read, in one pass.
class QueueTotals {
  public:
    /// Reserves memory for that many jobs; without exceptions until then.
    void reserve(std::size_t count);

    void append(const ConversionJob& job);

    /// Requires: `index` is that of a job. Called after every write of its state or progress.
    void update(std::size_t index, const ConversionJob& job) noexcept;

    /// Moves the jobs after the index up by one. Requires: `index` is that of a job.
    void remove(std::size_t index) noexcept;

    /// Returns the number of completed jobs.
    std::size_t completedCount() const noexcept;

    /// Returns the mean progress, added up in the order of the jobs: a completed one counts as 1,
    /// and no jobs give 0.
    double overallProgress() const noexcept;

  private:
    std::vector<double> progress_;
    /// 1 for a completed job, else 0.
    std::vector<unsigned char> completed_;
};

} // namespace kestrel
