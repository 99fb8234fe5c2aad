#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace kestrel {

/// A random 128-bit identifier.
class UUID {
  public:
    /// Draws a fresh identifier from the system's source of randomness. Any thread.
    static UUID random();

    constexpr const std::array<std::uint8_t, 16>& bytes() const noexcept { return bytes_; }

    friend bool operator==(const UUID&, const UUID&) = default;

  private:
    constexpr explicit UUID(const std::array<std::uint8_t, 16>& bytes) noexcept : bytes_(bytes) {}

    std::array<std::uint8_t, 16> bytes_;
};

} // namespace kestrel

template <> struct std::hash<kestrel::UUID> {
    std::size_t operator()(const kestrel::UUID& id) const noexcept;
};
