#pragma once

#include <cstdio>
#include <cstdlib>

namespace kestrel {

/// Prints the property to stderr and aborts unless it holds.
inline void require(bool holds, const char* property) {
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "Does not hold: %s\n", property));
        std::abort();
    }
}

} // namespace kestrel
