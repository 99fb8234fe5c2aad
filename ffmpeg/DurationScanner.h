#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// Finds the length that the first "Duration: h:m:s" of ffmpeg's diagnostics gives, in whatever
/// pieces they arrive. Keeps none of them but the start of what may become a duration. Any thread,
/// one at a time.
class DurationScanner {
  public:
    /// A duration whose text is longer than this, in bytes, counts as one that cannot be read.
    static constexpr std::size_t maximumLength = 4096;

    /// Takes the next bytes of the diagnostics.
    void feed(std::string_view bytes);

    /// The diagnostics have ended: seconds, or 0 where no length was found.
    double finish();

  private:
    /// What may be the start of a duration, cut off where the last piece ended.
    std::string pending_;
    /// Whether that start is too long already; its numbers are shortened then.
    bool isOverlong_ = false;
    /// Set once the first duration has been seen; it may be one that cannot be read.
    std::optional<double> seconds_;
};

} // namespace kestrel
