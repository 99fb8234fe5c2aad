#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace kestrel {

/// How many descriptors this process has open.
inline std::ptrdiff_t descriptorCount() {
    // The iterator's own descriptor is in every count.
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

} // namespace kestrel
