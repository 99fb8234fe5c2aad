#pragma once

#include <memory>
#include <string>
#include <utility>

namespace kestrel {

/// Where a queued file stands. Equal when the case is the same and, for a failure, the message too.
/// Copies of a failure share its message, which never changes: the many jobs without one should not
/// have to carry room for it.
class JobState {
  public:
    enum class Case : unsigned char { failed, waiting, converting, completed, cancelled };

    /// The conversion ended in an error; the message, UTF-8, is shown to the user and may be empty.
    static JobState failed(std::string message) {
        return JobState(Case::failed, std::make_shared<const std::string>(std::move(message)));
    }

    /// Queued, not started.
    static JobState waiting() { return JobState(Case::waiting); }

    /// ffmpeg is running for this job.
    static JobState converting() { return JobState(Case::converting); }

    /// The output file was written.
    static JobState completed() { return JobState(Case::completed); }

    /// The user stopped the conversion.
    static JobState cancelled() { return JobState(Case::cancelled); }

    Case which() const noexcept { return case_; }

    bool is(Case other) const noexcept { return case_ == other; }

    /// Empty unless the case is `failed`. Valid as long as this object, and not assigned to.
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
