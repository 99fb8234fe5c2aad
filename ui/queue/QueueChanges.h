#pragma once

#include <cstddef>
#include <vector>

namespace kestrel {

/// What has happened to the jobs of a queue since a view read them last, apart from those added at
/// its end, so that the view need not compare every job.
class QueueChanges {
  public:
    /// The state of the job at this index has changed.
    void addChange(std::size_t index);

    /// The job at this index has been removed, and those after it have moved up by one.
    void addRemoval(std::size_t index);

    /// The indexes that the changed jobs have now; may have duplicates.
    const std::vector<std::size_t>& changed() const noexcept { return changed_; }

    /// The removals in their order. Each index is that at its time.
    const std::vector<std::size_t>& removed() const noexcept { return removed_; }

  private:
    std::vector<std::size_t> changed_;
    std::vector<std::size_t> removed_;
};

} // namespace kestrel
