#include "FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace kestrel {

void fatalError(const char* message) noexcept {
    static_cast<void>(std::fprintf(stderr, "Fatal error: %s\n", message));
    std::abort();
}

} // namespace kestrel
