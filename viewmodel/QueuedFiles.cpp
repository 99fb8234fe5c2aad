#include "QueuedFiles.h"

namespace kestrel {

QueuedFiles::QueuedFiles(const std::vector<ConversionJob>& queue, std::size_t expected) {
    standardized_.reserve(queue.size() + expected);
    for (const ConversionJob& job : queue) {
        insert(job.source());
    }
}

bool QueuedFiles::contains(const FileURL& file) const {
    return standardized_.contains(file.standardized());
}

void QueuedFiles::insert(const FileURL& file) {
    standardized_.insert(file.standardized());
}

} // namespace kestrel
