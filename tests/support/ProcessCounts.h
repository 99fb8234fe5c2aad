#pragma once

#include <cstddef>
#include <string>

namespace kestrel::test {

/// Resource counts of this process.
struct ProcessCounts {
    /// Includes the one that counting opens.
    std::size_t descriptors = 0;
    /// Includes zombies.
    std::size_t children = 0;
    std::size_t threads = 0;

    static ProcessCounts now();

    /// For failure messages.
    std::string text() const;
};

} // namespace kestrel::test
