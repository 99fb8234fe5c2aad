#pragma once

#include "ConversionRunner.h"

#include <QFuture>

#include <exception>
#include <memory>

namespace kestrel {

/// Runs one conversion on its own detached thread, so that quitting need not join it. Called on the
/// main thread, which alone uses the future: it finishes in the event loop, after every progress
/// report posted before, with the exception that ended the conversion, or null; at once if the
/// thread cannot be started.
QFuture<std::exception_ptr> convertOnWorker(const std::shared_ptr<ConversionRunner>& runner,
                                            const FileURL& source, const FileURL& destination,
                                            const ConversionSettings& settings,
                                            const ConversionRunner::ProgressHandler& onProgress);

} // namespace kestrel
