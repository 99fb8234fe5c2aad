#pragma once

#include <memory>
#include <string>
#include <utility>

namespace kestrel {

/// State of a queued file. Compares equal iff the case and, for a failure, the error message are
/// equal. Copies share the immutable message, so that the many jobs without one do not reserve
/// memory for it.
class JobState {
  public:
    enum class Case : unsigned char { failed, waiting, converting, completed, cancelled };

    /// The conversion failed with this error message: UTF-8, shown to the user, may be empty.
    static JobState failed(std::string message) {
        return JobState(Case::failed, std::make_shared<const std::string>(std::move(message)));
    }

    /// Queued, not started.
    static JobState waiting() { return JobState(Case::waiting); }

    /// ffmpeg is running for this job.
    static JobState converting() { return JobState(Case::converting); }

    /// ffmpeg reported success.
    static JobState completed() { return JobState(Case::completed); }

    /// ffmpeg was killed by a signal, usually that of "Cancel".
    static JobState cancelled() { return JobState(Case::cancelled); }

    Case which() const noexcept { return case_; }

    bool is(Case other) const noexcept { return case_ == other; }

    /// Empty unless `failed`. Valid until this object is assigned to, moved from or destroyed.
    const std::string& message() const noexcept {
        static const std::string none;
        return message_ ? *message_ : none;
    }

    friend bool operator==(const JobState& a, const JobState& b) noexcept {
        return a.case_ == b.case_ && a.message() == b.message();
    }

  private:
    explicit JobState(Case which, std::shared_ptr<const std::string> message = nullptr) noexcept
        : case_(which), message_(std::move(message)) {}

    Case case_;
    std::shared_ptr<const std::string> message_;
};

} // namespace kestrel
