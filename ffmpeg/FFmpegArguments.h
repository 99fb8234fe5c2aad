#pragma once

#include "ConversionSettings.h"
#include "FileURL.h"

#include <string>
#include <vector>

namespace kestrel {

/// What ffmpeg is given, after its own name, to convert one file.
std::vector<std::string> conversionArguments(const FileURL& source, const FileURL& destination,
                                             const ConversionSettings& settings);

/// What ffmpeg is given, after its own name, to describe one file.
std::vector<std::string> probeArguments(const FileURL& source);

} // namespace kestrel
