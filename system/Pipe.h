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

    /// Both ends are above STDERR_FILENO, even if standard streams are closed. Throws
    /// std::system_error when the pipe cannot be created.
    static Pipe make();
};

/// Reads to EOF and calls `onChunk` with the data as it arrives; a chunk is valid during the call.
/// Blocks. Throws std::system_error on a read error.
void readChunks(const FileDescriptor& source, const std::function<void(std::string_view)>& onChunk);

/// Reads to EOF, then closes the descriptor. Blocks. Throws std::system_error on a read error.
std::string readToEnd(FileDescriptor source);

} // namespace kestrel
