#pragma once

#include "FileURL.h"
#include "JobState.h"
#include "UUID.h"

#include <optional>
#include <utility>

namespace kestrel {

/// One input file in the queue; a value type. Compares memberwise, so a job whose progress or
/// duration is NaN is not equal to itself.
class ConversionJob {
  public:
    /// A waiting job with a new id.
    explicit ConversionJob(FileURL source) : id_(UUID::random()), source_(std::move(source)) {}

    /// Unique, even among jobs for the same file.
    const UUID& id() const noexcept { return id_; }

    const FileURL& source() const noexcept { return source_; }

    friend bool operator==(const ConversionJob&, const ConversionJob&) = default;

    // Hot fields first and adjacent, for cache locality when a long queue is iterated.
  private:
    UUID id_;

  public:
    /// The fraction done, nominally 0 to 1.
    double progress = 0.0;
    JobState state = JobState::waiting();
    /// Seconds. Never set: each conversion probes the duration itself.
    std::optional<double> duration;

  private:
    FileURL source_;
};

} // namespace kestrel
