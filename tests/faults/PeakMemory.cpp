#include "PeakMemory.h"

#include <malloc.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace kestrel::test {

namespace {

/// A field of /proc/self/status, in bytes.
std::size_t statusField(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == key) {
            std::size_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
    }
    throw std::runtime_error("/proc/self/status has no " + key);
}

} // namespace

bool PeakMemory::isBlurred() noexcept {
#ifdef KESTREL_SANITIZED
    return true;
#else
    return false;
#endif
}

std::size_t PeakMemory::resident() {
    ::malloc_trim(0);
    return statusField("VmRSS:");
}

PeakMemory::PeakMemory() : before_(resident()) {
    // Resets VmHWM to the current RSS.
    std::ofstream("/proc/self/clear_refs") << "5";
}

std::size_t PeakMemory::growth() const {
    const std::size_t peak = statusField("VmHWM:");
    return peak > before_ ? peak - before_ : 0;
}

} // namespace kestrel::test
