#pragma once

#include "ConversionJob.h"
#include "FileURL.h"

#include <unordered_set>
#include <vector>

namespace kestrel {

/// The files of a queue, for duplicate detection: two differently written paths of one file are the
/// same file. Built in O(n); takes as much memory as the paths of the queue.
class QueuedFiles {
  public:
    explicit QueuedFiles(const std::vector<ConversionJob>& queue);

    bool contains(const FileURL& file) const;
    void insert(const FileURL& file);

  private:
    std::unordered_set<FileURL> standardized_;
};

} // namespace kestrel
