#pragma once

#include "FileURL.h"
#include "JobState.h"
#include "UUID.h"

#include <optional>
#include <utility>

namespace kestrel {

/// One input file in the queue: a plain value, copied freely. Equality is field by field, with
/// floating-point rules, so a job whose progress is NaN is not even equal to itself.
class ConversionJob {
  public:
    /// A waiting job with a fresh identity.
    explicit ConversionJob(FileURL source) : id_(UUID::random()), source_(std::move(source)) {}

    /// Tells jobs apart, also when they stand for the same file.
    const UUID& id() const noexcept { return id_; }

    const FileURL& source() const noexcept { return source_; }

    friend bool operator==(const ConversionJob&, const ConversionJob&) = default;

    // Each member stands where the walks over a long queue find it soonest: what they look at comes
    // first, close together.
  private:
    UUID id_;

  public:
    /// The fraction done, nominally 0 to 1.
    double progress = 0.0;
    JobState state = JobState::waiting();
    /// Seconds. Nothing sets it: a conversion measures the length for itself.
    std::optional<double> duration;

  private:
    FileURL source_;
};

} // namespace kestrel
