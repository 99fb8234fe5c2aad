#include "QueuedFiles.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <optional>
#include <utility>

namespace kestrel {
namespace {

/// The standardized form of a file's path, copied only if it differs. Requires: `file` outlives it.
class Standardized {
  public:
    explicit Standardized(const FileURL& file) : file_(&file) {
        if (!file.isStandardized()) {
            copy_ = file.standardized();
        }
    }

    const FileURL& file() const { return copy_ ? *copy_ : *file_; }

    std::uint32_t hash() const { return static_cast<std::uint32_t>(std::hash<FileURL>()(file())); }

  private:
    const FileURL* file_;
    std::optional<FileURL> copy_;
};

} // namespace

QueuedFiles::QueuedFiles(const std::vector<ConversionJob>& queue, std::size_t expected)
    : queue_(&queue) {
    reserve(queue.size() + expected);
    update();
}

bool QueuedFiles::contains(const FileURL& file) const {
    const Standardized standardized(file);
    return slots_[find(standardized.hash(), standardized.file())].number != 0;
}

void QueuedFiles::update() {
    reserve(queue_->size());
    for (; added_ < queue_->size(); ++added_) {
        const Standardized standardized((*queue_)[added_].source());
        const std::uint32_t hash = standardized.hash();
        Slot& slot = slots_[find(hash, standardized.file())];
        if (slot.number == 0) {
            slot = {hash, static_cast<std::uint32_t>(added_ + 1)};
        }
    }
}

void QueuedFiles::reserve(std::size_t count) {
    constexpr std::size_t fewest = 16;
    const std::size_t size = std::bit_ceil(std::max(2 * count, fewest));
    if (size <= slots_.size()) {
        return;
    }
    const std::vector<Slot> before = std::exchange(slots_, std::vector<Slot>(size));
    for (const Slot& slot : before) {
        if (slot.number != 0) {
            std::size_t position = slot.hash & (size - 1);
            while (slots_[position].number != 0) {
                position = (position + 1) & (size - 1);
            }
            slots_[position] = slot;
        }
    }
}

std::size_t QueuedFiles::find(std::uint32_t hash, const FileURL& standardized) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t position = hash & mask;
    for (; slots_[position].number != 0; position = (position + 1) & mask) {
        const Slot& slot = slots_[position];
        if (slot.hash == hash &&
            Standardized((*queue_)[slot.number - 1].source()).file() == standardized) {
            break;
        }
    }
    return position;
}

} // namespace kestrel
