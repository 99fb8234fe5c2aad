#pragma once

#include <cstdio>
#include <cstdlib>

namespace kestrel {

/// Prints the property and aborts where it does not hold.
inline void require(bool holds, const char* property) {
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "Does not hold: %s\n", property));
        std::abort();
    }
}

} // namespace kestrel
