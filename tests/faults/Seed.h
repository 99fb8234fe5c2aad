#pragma once

#include <cstdlib>
#include <random>
#include <string>

namespace kestrel::test {

/// A random seed, or the environment variable KESTREL_SEED, to reproduce a run.
inline unsigned int randomSeed() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): no other thread calls setenv().
    const char* const given = std::getenv("KESTREL_SEED");
    return given != nullptr ? static_cast<unsigned int>(std::stoul(given)) : std::random_device()();
}

} // namespace kestrel::test
