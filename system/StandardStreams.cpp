#include "StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace kestrel {

void redirectMissingStandardStreams() noexcept {
    if (::isatty(STDIN_FILENO) != 0) {
        ::close(STDIN_FILENO);
    }
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) {
            // open() returns the lowest free descriptor, so this one. Children inherit it.
            // NOLINTNEXTLINE(android-cloexec-open)
            static_cast<void>(::open("/dev/null", O_RDWR));
        }
    }
}

} // namespace kestrel
