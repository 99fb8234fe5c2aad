#include "FFmpegArguments.h"

#include <utility>

namespace kestrel {

std::vector<std::string> conversionArguments(const FileURL& source, const FileURL& destination,
                                             const ConversionSettings& settings) {
    std::vector<std::string> arguments{settings.overwrite ? "-y" : "-n",
                                       "-hide_banner",
                                       "-i",
                                       source.path(),
                                       "-map",
                                       "0:a:0",
                                       "-vn"};
    for (std::string& argument :
         settings.format.audioArguments(settings.quality, settings.bitDepth)) {
        arguments.push_back(std::move(argument));
    }
    for (const char* argument : {"-map_metadata", "0", "-progress", "pipe:1", "-nostats"}) {
        arguments.emplace_back(argument);
    }
    arguments.push_back(destination.path());
    return arguments;
}

std::vector<std::string> probeArguments(const FileURL& source) {
    return {"-hide_banner", "-i", source.path()};
}

} // namespace kestrel
