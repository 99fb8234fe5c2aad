#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

namespace kestrel {

/// Sample depth of uncompressed output.
class PCMBitDepth {
  public:
    enum Case : unsigned char { sixteen, twentyFour };

    // NOLINTNEXTLINE(google-explicit-constructor): a case is a bit depth
    constexpr PCMBitDepth(Case value) noexcept : value_(value) {}

    /// In declaration order, which is the order shown to the user.
    static constexpr std::array<Case, 2> allCases{sixteen, twentyFour};

    /// Parses exactly "16-bit" or "24-bit"; std::nullopt for anything else.
    static constexpr std::optional<PCMBitDepth> fromRawValue(std::string_view rawValue) noexcept {
        for (const PCMBitDepth depth : allCases) {
            if (depth.rawValue() == rawValue) {
                return depth;
            }
        }
        return std::nullopt;
    }

    /// The text shown to the user.
    constexpr std::string_view rawValue() const noexcept {
        return value_ == sixteen ? "16-bit" : "24-bit";
    }

    constexpr std::string_view id() const noexcept { return rawValue(); }

    constexpr operator Case() const noexcept { return value_; }

  private:
    Case value_;
};

} // namespace kestrel

template <> struct std::hash<kestrel::PCMBitDepth> {
    std::size_t operator()(kestrel::PCMBitDepth depth) const noexcept {
        return static_cast<std::size_t>(depth);
    }
};
