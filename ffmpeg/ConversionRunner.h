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

    /// Converts `source` to the file `destination`, creating its folder if missing. Returns iff the
    /// output is written; otherwise throws an FFmpegError, a PlatformError, std::bad_alloc, or what
    /// `onProgress` threw. Blocks until the conversion ends: any thread but the main one, one call
    /// at a time.
    virtual void convert(const FileURL& source, const FileURL& destination,
                         const ConversionSettings& settings, const ProgressHandler& onProgress) = 0;

    /// Asks the running conversion to stop, without waiting for it. No-op if none is running or its
    /// child has not been launched yet. Thread-safe.
    virtual void interruptActiveProcess() = 0;
};

} // namespace kestrel
