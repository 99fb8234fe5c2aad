#pragma once

#include "FileURL.h"

#include <string>
#include <vector>

namespace kestrel::test {

/// What ffprobe tells of the first audio stream of a file.
struct AudioDescription {
    std::string codec;
    std::string sampleFormat;
    double seconds = 0;
};

/// Makes a real Opus file, a tone, at this place, whatever the bytes of its name.
void makeOpusFile(const FileURL& url, double seconds);

/// Makes one that takes its time to be converted but not to be made: the same minute over and over.
void makeLongOpusFile(const FileURL& url, int minutes);

/// Throws std::runtime_error where ffprobe finds no audio.
AudioDescription describeAudio(const FileURL& url);

/// Runs a program found through PATH and returns what it wrote to standard output. Throws
/// std::runtime_error when it does not exit with 0.
std::string runProgram(const std::vector<std::string>& command);

} // namespace kestrel::test
