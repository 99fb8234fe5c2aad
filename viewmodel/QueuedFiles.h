#pragma once

#include "ConversionJob.h"
#include "FileURL.h"

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace kestrel {

/// The files of a queue, for duplicate detection: two differently written paths of one file are the
/// same file. Built in O(n); takes as much memory as the paths of the queue.
class QueuedFiles {
  public:
    /// Reserves room for that many insertions.
    explicit QueuedFiles(const std::vector<ConversionJob>& queue, std::size_t expected = 0);

    bool contains(const FileURL& file) const;
    void insert(const FileURL& file);

  private:
    std::unordered_set<FileURL> standardized_;
};

} // namespace kestrel
