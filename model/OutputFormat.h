#pragma once

#include "PCMBitDepth.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

/// What kind of file a conversion makes.
class OutputFormat {
  public:
    enum Case : unsigned char { mp3, aiff, wav };

    // NOLINTNEXTLINE(google-explicit-constructor): a case is a format
    constexpr OutputFormat(Case value) noexcept : value_(value) {}

    /// In declaration order, which is the order shown to the user.
    static constexpr std::array<Case, 3> allCases{mp3, aiff, wav};

    /// Exactly "MP3", "AIFF" or "WAV"; none for anything else.
    static constexpr std::optional<OutputFormat> fromRawValue(std::string_view rawValue) noexcept {
        for (const OutputFormat format : allCases) {
            if (format.rawValue() == rawValue) {
                return format;
            }
        }
        return std::nullopt;
    }

    /// The text shown for it.
    constexpr std::string_view rawValue() const noexcept {
        switch (value_) {
        case mp3:
            return "MP3";
        case aiff:
            return "AIFF";
        case wav:
            break;
        }
        return "WAV";
    }

    constexpr std::string_view id() const noexcept { return rawValue(); }

    /// The raw value in lower case, without a dot.
    std::string fileExtension() const;

    /// The encoder part of the ffmpeg command line. `quality` runs from 0 to 100, higher is better,
    /// and counts for MP3 alone, where a value that yields no 64-bit integer is a fatal error;
    /// `bitDepth` counts for AIFF and WAV alone.
    std::vector<std::string> audioArguments(double quality, PCMBitDepth bitDepth) const;

    constexpr operator Case() const noexcept { return value_; }

  private:
    Case value_;
};

} // namespace kestrel

template <> struct std::hash<kestrel::OutputFormat> {
    std::size_t operator()(kestrel::OutputFormat format) const noexcept {
        return static_cast<std::size_t>(format);
    }
};
