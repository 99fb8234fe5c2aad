#pragma once

#include <cstddef>
#include <cstdint>

/// Runs the target on one input. Returns 0; aborts if a property does not hold. Called by
/// libFuzzer, or by Replay.cpp in builds without it.
// NOLINTNEXTLINE(readability-identifier-naming): libFuzzer requires this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
