#pragma once

#include "ConversionSettings.h"
#include "FileURL.h"

#include <functional>

namespace kestrel {

/// Converts one file at a time. An interface, so that the batch can be tested with a scripted
/// runner.
class ConversionRunner {
  public:
    /// Called with the fraction done, at most 1 and possibly negative, on the thread that runs
    /// `convert`, in the order of the reports.
    using ProgressHandler = std::function<void(double)>;

    ConversionRunner() = default;
    ConversionRunner(const ConversionRunner&) = delete;
    ConversionRunner& operator=(const ConversionRunner&) = delete;
    virtual ~ConversionRunner() = default;

    /// Converts `source` to the file `destination`, creating its folder if missing. Returns if
    /// ffmpeg reports success; otherwise throws an FFmpegError, a PlatformError, std::bad_alloc, or
    /// what `onProgress` threw. Blocks until the conversion ends: any thread but the main one, one
    /// call at a time.
    virtual void convert(const FileURL& source, const FileURL& destination,
                         const ConversionSettings& settings, const ProgressHandler& onProgress) = 0;

    /// Announces a call of `convert` on another thread, so that an interrupt which comes before
    /// that thread runs is not lost. Optional.
    virtual void prepareConversion() {}

    /// Asks the running conversion to stop, without waiting for it. An interrupt before its child
    /// is launched, as during the duration probe, takes effect at the launch. No-op if no
    /// conversion is running. Thread-safe.
    virtual void interruptActiveProcess() = 0;
};

} // namespace kestrel
