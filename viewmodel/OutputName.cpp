#include "OutputName.h"

#include "FileSystem.h"

#include <string>

namespace kestrel {

FileURL outputFile(const FileURL& source, const FileURL& folder,
                   const ConversionSettings& settings) {
    const std::string base = std::string(source.baseName()) + "_converted";
    const std::string extension = settings.format.fileExtension();
    FileURL candidate = folder.appendingPathComponent(base).appendingPathExtension(extension);
    for (int counter = 2; !settings.overwrite && fileExists(candidate); ++counter) {
        candidate = folder.appendingPathComponent(base + "_" + std::to_string(counter))
                        .appendingPathExtension(extension);
    }
    return candidate;
}

} // namespace kestrel
