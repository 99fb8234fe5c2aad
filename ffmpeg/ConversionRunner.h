#pragma once

#include "ConversionSettings.h"
#include "FileURL.h"

#include <functional>

namespace kestrel {

/// What converts one file. The batch drives conversions through this, so that it can be tested with
/// a scripted one.
class ConversionRunner {
  public:
    /// Receives the fraction done, at most 1, on the thread that runs `convert`, in the order of
    /// the reports. Negative fractions are possible.
    using ProgressHandler = std::function<void(double)>;

    ConversionRunner() = default;
    ConversionRunner(const ConversionRunner&) = delete;
    ConversionRunner& operator=(const ConversionRunner&) = delete;
    virtual ~ConversionRunner() = default;

    /// Converts `source` into the file `destination`, whose folder is created where it is missing.
    /// Returns when the output is written; when it is not, throws an FFmpegError, a PlatformError,
    /// std::bad_alloc, or what `onProgress` threw. Blocks, for as long as the conversion takes: any
    /// thread but the main one, one call at a time.
    virtual void convert(const FileURL& source, const FileURL& destination,
                         const ConversionSettings& settings, const ProgressHandler& onProgress) = 0;

    /// Asks the conversion that runs now to stop, and returns at once. Without a running
    /// conversion, or while it has not got as far as starting its child, nothing happens. Any
    /// thread.
    virtual void interruptActiveProcess() = 0;
};

} // namespace kestrel
