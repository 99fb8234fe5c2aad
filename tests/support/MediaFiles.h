#pragma once

#include "FileURL.h"

#include <string>
#include <vector>

namespace kestrel::test {

/// The first audio stream of a file, according to ffprobe.
struct AudioDescription {
    std::string codec;
    std::string sampleFormat;
    double seconds = 0;
};

/// Writes a real Opus file, a tone. Its name may have any bytes. Tones are cached in
/// $KESTREL_TEST_MEDIA, or in the build folder if that is unset.
void makeOpusFile(const FileURL& url, double seconds);

/// Writes an Opus file that is slow to convert but quick to create: one minute, looped.
void makeLongOpusFile(const FileURL& url, int minutes);

/// Throws std::runtime_error when ffprobe finds no audio.
AudioDescription describeAudio(const FileURL& url);

/// Runs a program from PATH and returns its stdout. Throws std::runtime_error when it cannot be
/// started or does not exit with 0.
std::string runProgram(const std::vector<std::string>& command);

} // namespace kestrel::test
