#pragma once

#include "OutputFormat.h"
#include "PCMBitDepth.h"

namespace kestrel {

/// The user's settings for conversions.
struct ConversionSettings {
    OutputFormat format = OutputFormat::mp3;
    /// Ignored for MP3.
    PCMBitDepth bitDepth = PCMBitDepth::twentyFour;
    /// 0 to 100, higher is better; ignored for AIFF and WAV. Not validated here.
    double quality = 82.0;
    /// Whether an existing output file may be replaced.
    bool overwrite = false;

    friend bool operator==(const ConversionSettings&, const ConversionSettings&) = default;
};

} // namespace kestrel
