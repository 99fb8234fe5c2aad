#pragma once

#include "ConversionSettings.h"
#include "FileURL.h"

namespace kestrel {

/// The file that the source is converted into: its base name and "_converted" in the folder given,
/// followed by "_2", "_3" and so on while such a file exists and may not be replaced.
FileURL outputFile(const FileURL& source, const FileURL& folder,
                   const ConversionSettings& settings);

} // namespace kestrel
