#pragma once

#include <optional>
#include <string_view>

namespace kestrel {

/// Parses one line of ffmpeg's -progress output. Returns the fraction done, at most 1 and negative
/// for a negative time, or std::nullopt if the line has none. `duration` is that of the input in
/// seconds, or 0 if unknown: then only the end yields a fraction. FFmpegService::convert calls it
/// for each line on the worker thread.
std::optional<double> progressFraction(std::string_view line, double duration);

/// Returns whether the line is the last of ffmpeg's -progress output. ffmpeg also writes it after
/// an interrupt or a full disk, but never if it opened no output.
bool isProgressEnd(std::string_view line) noexcept;

} // namespace kestrel
