#pragma once

#include <exception>
#include <string>

namespace kestrel {

/// Why a conversion ended without its output.
class FFmpegError final : public std::exception {
  public:
    enum class Case : unsigned char { processFailed, notFound, cancelled };

    /// ffmpeg exited with an error; `message` is the tail of its diagnostics, UTF-8, maybe empty.
    static FFmpegError processFailed(std::string message);

    /// ffmpeg is not installed where it is looked for.
    static FFmpegError notFound();

    /// ffmpeg was killed by a signal.
    static FFmpegError cancelled();

    Case which() const noexcept { return case_; }

    /// The text for the user, UTF-8.
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
