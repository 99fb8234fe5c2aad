#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel {

/// Incremental scanner for the first "Duration: h:m:s" in ffmpeg's stderr, which may be chunked
/// anywhere. Buffers only a partial match at the end of a chunk. Not thread-safe.
class DurationScanner {
  public:
    /// A duration whose text is longer than this, in bytes, is invalid.
    static constexpr std::size_t maximumLength = 4096;

    /// Consumes the next chunk of stderr.
    void feed(std::string_view bytes);

    /// Call at EOF. Returns seconds, or 0 if there was no duration or the first one is invalid.
    double finish();

  private:
    /// A partial match at the end of the last chunk.
    std::string pending_;
    /// Whether `pending_` exceeded `maximumLength`; its runs of digits are collapsed then.
    bool isOverlong_ = false;
    /// Set once the first duration has been seen; 0 if it is invalid.
    std::optional<double> seconds_;
};

} // namespace kestrel
