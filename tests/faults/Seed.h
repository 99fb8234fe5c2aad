#pragma once

#include <cstdlib>
#include <random>
#include <string>

namespace kestrel::test {

/// What a test draws its random numbers from: fresh at every run, or KESTREL_SEED of the
/// environment, to repeat one.
inline unsigned int randomSeed() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody changes the environment meanwhile.
    const char* const given = std::getenv("KESTREL_SEED");
    return given != nullptr ? static_cast<unsigned int>(std::stoul(given)) : std::random_device()();
}

} // namespace kestrel::test
