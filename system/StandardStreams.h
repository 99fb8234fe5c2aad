#pragma once

namespace kestrel {

/// Puts the null device where this program was started without a standard input, output or error,
/// so that no file or connection takes their place; and where standard input is a terminal. The
/// program reads nothing from it, but ffmpeg would: keys typed there would end a conversion, and
/// one of a program in the background of its terminal would be stopped for good. Main thread,
/// before anything else is opened.
void redirectMissingStandardStreams() noexcept;

} // namespace kestrel
