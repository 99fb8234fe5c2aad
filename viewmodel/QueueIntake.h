#pragma once

#include "ConversionJob.h"
#include "FileURL.h"
#include "QueuedFiles.h"

#include <optional>
#include <vector>

namespace kestrel {

/// Returns the files to queue for these files and folders, sorted by name: folders are listed
/// recursively, files without an accepted extension (case-insensitive) and files in `queue` are
/// skipped. Files need not exist; duplicates within `urls` are kept.
///
/// `queued`, if given, has the files of `queue`, which saves building it from the queue.
std::vector<FileURL> filesToQueue(const std::vector<FileURL>& urls,
                                  const std::vector<ConversionJob>& queue,
                                  const std::optional<QueuedFiles>& queued = std::nullopt);

} // namespace kestrel
