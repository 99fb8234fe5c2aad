#pragma once

#include "ConversionRunner.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace kestrel::bench {

/// Conversions that block until end() or interruptActiveProcess(); as many as endAtOnce() says
/// return at once. Thread-safe.
class StepwiseRunner final : public ConversionRunner {
  public:
    explicit StepwiseRunner(std::size_t endingAtOnce = 0) : endingAtOnce_(endingAtOnce) {}

    void convert(const FileURL&, const FileURL&, const ConversionSettings&,
                 const ProgressHandler& onProgress) override;

    /// The blocked conversion ends as cancelled.
    void interruptActiveProcess() override;

    /// Returns true iff a conversion is blocked.
    bool isWaiting();

    /// Requires: `isWaiting()`.
    void report(double fraction);

    /// The blocked conversion succeeds.
    void end();

    /// The next `count` conversions succeed at once.
    void endAtOnce(std::size_t count);

  private:
    enum class Ending : unsigned char { none, success, cancellation };

    void end(Ending ending);

    std::mutex mutex_;
    std::condition_variable changed_;
    ProgressHandler onProgress_;
    std::size_t endingAtOnce_;
    Ending ending_ = Ending::none;
};

} // namespace kestrel::bench
