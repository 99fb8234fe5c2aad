#pragma once

#include <cstddef>

namespace kestrel::test {

/// How far the memory of this process rises while the object lives.
class PeakMemory {
  public:
    /// Whether this build keeps freed memory, or shadows of all memory, for its checks.
    static bool isBlurred() noexcept;

    /// Bytes of this process that are resident now.
    static std::size_t resident();

    PeakMemory();

    /// Resident bytes at the highest since the making of the object, beyond those at that time.
    std::size_t growth() const;

  private:
    std::size_t before_;
};

} // namespace kestrel::test
