#pragma once

#include <optional>
#include <string_view>

namespace kestrel {

/// The fraction done that one line of ffmpeg's progress report tells, or none where it tells
/// nothing. `duration` is the length of the input in seconds, 0 where it is unknown: only the end
/// is told then. At most 1; negative where ffmpeg reports a negative time.
std::optional<double> progressFraction(std::string_view line, double duration);

/// Whether the line is the last of ffmpeg's progress report. It comes also after an interrupt or a
/// full disk, but never where ffmpeg opened no output.
bool isProgressEnd(std::string_view line) noexcept;

} // namespace kestrel
