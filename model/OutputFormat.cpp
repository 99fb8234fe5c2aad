#include "OutputFormat.h"

#include "AsciiCase.h"
#include "FatalError.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace kestrel {

namespace {

/// LAME's VBR level, 0 (best) to 7, for a quality of 0 to 100.
std::int64_t vbrLevel(double quality) {
    constexpr double beyondInt64 = 0x1p63;
    // std::round rounds half away from zero: 95 gives 1, 85 gives 2.
    const double level = std::round((100.0 - quality) / 10.0);
    if (!(level >= -beyondInt64 && level < beyondInt64)) {
        fatalError("MP3 quality is not a finite number in range");
    }
    return std::clamp<std::int64_t>(static_cast<std::int64_t>(level), 0, 7);
}

std::string pcmCodec(OutputFormat format, PCMBitDepth bitDepth) {
    std::string codec = bitDepth == PCMBitDepth::sixteen ? "pcm_s16" : "pcm_s24";
    codec += format == OutputFormat::aiff ? "be" : "le";
    return codec;
}

} // namespace

std::string OutputFormat::fileExtension() const {
    return asciiLowercased(rawValue());
}

std::vector<std::string> OutputFormat::audioArguments(double quality, PCMBitDepth bitDepth) const {
    if (value_ == mp3) {
        return {"-c:a",           "libmp3lame", "-q:a", std::to_string(vbrLevel(quality)),
                "-id3v2_version", "3"};
    }
    return {"-c:a", pcmCodec(*this, bitDepth)};
}

} // namespace kestrel
