#pragma once

#include "FileDescriptor.h"

#include <functional>
#include <string>
#include <string_view>

namespace kestrel {

/// The two ends of a pipe, both close-on-exec.
struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;

    /// Neither end takes the place of a standard stream, even where those are closed. Throws
    /// std::system_error.
    static Pipe make();
};

/// Reads to the end of the stream and hands over what arrives, as it arrives, in order; a chunk is
/// valid during the call. Blocks. Throws std::system_error.
void readChunks(const FileDescriptor& source, const std::function<void(std::string_view)>& onChunk);

/// Reads to the end of the stream and closes it. Blocks. Throws std::system_error.
std::string readToEnd(FileDescriptor source);

} // namespace kestrel
