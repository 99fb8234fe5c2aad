#pragma once

#include "ConversionSettings.h"
#include "FileURL.h"

namespace kestrel {

/// Returns the output file: the source's base name and "_converted" in `folder`, followed by "_2",
/// "_3" and so on while such a file exists and `settings.overwrite` is false.
FileURL outputFile(const FileURL& source, const FileURL& folder,
                   const ConversionSettings& settings);

} // namespace kestrel
