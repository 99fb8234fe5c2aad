#pragma once

namespace kestrel {

/// Opens /dev/null for each standard stream that is closed, so that no other file or connection
/// gets its descriptor, and for stdin if it is a terminal: ffmpeg would read it, so that typed keys
/// would end a conversion, and job control would stop the ffmpeg of a background process for good.
/// Called on the main thread, before anything else is opened.
void redirectMissingStandardStreams() noexcept;

} // namespace kestrel
