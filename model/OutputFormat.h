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

/// Output file format of a conversion.
class OutputFormat {
  public:
    enum Case : unsigned char { mp3, aiff, wav };

    // NOLINTNEXTLINE(google-explicit-constructor): a case is a format
    constexpr OutputFormat(Case value) noexcept : value_(value) {}

    /// In declaration order, which is the order shown to the user.
    static constexpr std::array<Case, 3> allCases{mp3, aiff, wav};

    /// Parses exactly "MP3", "AIFF" or "WAV"; std::nullopt for anything else.
    static constexpr std::optional<OutputFormat> fromRawValue(std::string_view rawValue) noexcept {
        for (const OutputFormat format : allCases) {
            if (format.rawValue() == rawValue) {
                return format;
            }
        }
        return std::nullopt;
    }

    /// The text shown to the user.
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

    /// The encoder arguments of the ffmpeg command line. `quality`: 0 to 100, higher is better; MP3
    /// only. Fatal error if it is NaN or its VBR level overflows 64 bits. `bitDepth`: AIFF and WAV
    /// only.
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
