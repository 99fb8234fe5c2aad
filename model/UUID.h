#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace kestrel {

/// A random 128-bit identifier.
class UUID {
  public:
    /// Draws a fresh identifier from the system's source of randomness. Any thread.
    static UUID random();

    friend bool operator==(const UUID&, const UUID&) = default;

  private:
    friend struct std::hash<UUID>;

    UUID(std::uint64_t first, std::uint64_t second) noexcept : first_(first), second_(second) {}

    // Two words are compared in two instructions, sixteen bytes in a call.
    std::uint64_t first_;
    std::uint64_t second_;
};

} // namespace kestrel

template <> struct std::hash<kestrel::UUID> {
    // The bits are random already: the first word is as good a hash as any.
    std::size_t operator()(const kestrel::UUID& id) const noexcept {
        return std::hash<std::uint64_t>()(id.first_);
    }
};
