#pragma once

#include <cstdlib>
#include <fstream>
#include <string>

namespace kestrel::bench {

/// The RSS of this process in KiB; 0 if it is not known.
inline long residentKibibytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::strtol(line.c_str() + 6, nullptr, 10);
        }
    }
    return 0;
}

} // namespace kestrel::bench
