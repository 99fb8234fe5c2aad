#include "QueueChanges.h"

namespace kestrel {

void QueueChanges::addChange(std::size_t index) {
    changed_.push_back(index);
}

void QueueChanges::addRemoval(std::size_t index) {
    removed_.push_back(index);
    std::erase(changed_, index);
    for (std::size_t& changed : changed_) {
        changed -= changed > index ? 1U : 0U;
    }
}

} // namespace kestrel
