#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace kestrel {

/// A random 128-bit identifier.
class UUID {
  public:
    /// Returns a new identifier from getrandom(). Thread-safe.
    static UUID random();

    friend bool operator==(const UUID&, const UUID&) = default;

  private:
    friend struct std::hash<UUID>;

    UUID(std::uint64_t first, std::uint64_t second) noexcept : first_(first), second_(second) {}

    // Two integers compare in two instructions; sixteen bytes would take a function call.
    std::uint64_t first_;
    std::uint64_t second_;
};

} // namespace kestrel

template <> struct std::hash<kestrel::UUID> {
    // The bits are uniformly random, so the first word is as good a hash as any.
    std::size_t operator()(const kestrel::UUID& id) const noexcept {
        return std::hash<std::uint64_t>()(id.first_);
    }
};
