#pragma once

#include <exception>
#include <string>

namespace kestrel {

/// Thrown by a conversion that failed or was cancelled.
class FFmpegError final : public std::exception {
  public:
    enum class Case : unsigned char { processFailed, notFound, cancelled };

    /// ffmpeg failed; `message` is the tail of its stderr, UTF-8. A generic message replaces an
    /// empty one.
    static FFmpegError processFailed(std::string message);

    /// None of the searched paths has ffmpeg.
    static FFmpegError notFound();

    /// ffmpeg was killed by a signal.
    static FFmpegError cancelled();

    Case which() const noexcept { return case_; }

    /// The error message for the user, UTF-8.
    const std::string& errorDescription() const noexcept { return description_; }

    const char* what() const noexcept override { return description_.c_str(); }

    friend bool operator==(const FFmpegError& a, const FFmpegError& b) noexcept {
        return a.case_ == b.case_ && a.description_ == b.description_;
    }

  private:
    FFmpegError(Case which, std::string description);

    Case case_;
    std::string description_;
};

} // namespace kestrel
