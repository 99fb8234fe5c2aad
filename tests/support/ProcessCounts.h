#pragma once

#include <cstddef>
#include <string>

namespace kestrel::test {

/// What this process holds.
struct ProcessCounts {
    /// The one that counting takes is among them, in every count.
    std::size_t descriptors = 0;
    /// Living ones and zombies.
    std::size_t children = 0;
    std::size_t threads = 0;

    static ProcessCounts now();

    /// For messages.
    std::string text() const;
};

} // namespace kestrel::test
