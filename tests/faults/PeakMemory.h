#pragma once

#include <cstddef>

namespace kestrel::test {

/// Measures the peak RSS of this process from construction on.
class PeakMemory {
  public:
    /// Returns true iff this build's sanitizer distorts the RSS (quarantine, shadow memory).
    static bool isBlurred() noexcept;

    /// The current RSS in bytes, after malloc_trim().
    static std::size_t resident();

    PeakMemory();

    /// The peak RSS since construction minus the RSS at construction, in bytes.
    std::size_t growth() const;

  private:
    std::size_t before_;
};

} // namespace kestrel::test
