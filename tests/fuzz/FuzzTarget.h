#pragma once

#include <cstddef>
#include <cstdint>

/// One input for the target that the program is made of: returns 0, or aborts where a property does
/// not hold. Called by the fuzzer, and by the replay of a corpus in the builds without one.
// NOLINTNEXTLINE(readability-identifier-naming): the fuzzer asks for this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
