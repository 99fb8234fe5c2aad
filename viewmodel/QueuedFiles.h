#pragma once

#include "ConversionJob.h"
#include "FileURL.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrel {

/// The files of a queue, for duplicate detection: two differently written paths of one file are the
/// same file. An index of the queue by hash, open-addressed, which copies no path: built in O(n),
/// with at most 32 bytes a job.
class QueuedFiles {
  public:
    /// Reserves room for that many jobs more. Requires: `queue` outlives this object, and no job of
    /// it is removed or moved.
    explicit QueuedFiles(const std::vector<ConversionJob>& queue, std::size_t expected = 0);

    /// Returns whether the file is one of those at the last update.
    bool contains(const FileURL& file) const;

    /// Adds the jobs that were appended to the queue since the last update.
    void update();

  private:
    struct Slot {
        std::uint32_t hash = 0;
        /// The job's index plus 1; 0 in an empty slot.
        std::uint32_t number = 0;
    };

    void reserve(std::size_t count);
    /// Returns the position of the file's slot, or of the empty one that it would take.
    std::size_t find(std::uint32_t hash, const FileURL& standardized) const;

    const std::vector<ConversionJob>* queue_;
    /// As many as a power of two, at least twice the number of files.
    std::vector<Slot> slots_;
    /// How many jobs of the queue have been added.
    std::size_t added_ = 0;
};

} // namespace kestrel
