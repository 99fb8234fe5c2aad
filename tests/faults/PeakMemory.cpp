#include "PeakMemory.h"

#include <malloc.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace kestrel::test {

namespace {

/// Bytes.
std::size_t statusEntry(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == key) {
            std::size_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
    }
    throw std::runtime_error("the system does not tell " + key);
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
    return statusEntry("VmRSS:");
}

PeakMemory::PeakMemory() : before_(resident()) {
    // Sets the highest back to what it is now.
    std::ofstream("/proc/self/clear_refs") << "5";
}

std::size_t PeakMemory::growth() const {
    const std::size_t peak = statusEntry("VmHWM:");
    return peak > before_ ? peak - before_ : 0;
}

} // namespace kestrel::test
