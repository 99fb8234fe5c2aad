#pragma once

#include "ConversionSettings.h"
#include "FileURL.h"

#include <string>
#include <vector>

namespace kestrel {

/// Returns the ffmpeg arguments, without argv[0], that convert one file.
std::vector<std::string> conversionArguments(const FileURL& source, const FileURL& destination,
                                             const ConversionSettings& settings);

/// Returns the ffmpeg arguments, without argv[0], of the duration probe.
std::vector<std::string> probeArguments(const FileURL& source);

} // namespace kestrel
