#pragma once

#include "ConversionRunner.h"

#include <QFuture>

#include <exception>
#include <memory>

namespace kestrel {

/// Runs one conversion on a thread of its own. The future belongs to the main thread and finishes
/// in its event loop, after every report that the conversion handed to that loop; its result is the
/// error that ended the conversion, or null. Nothing joins the thread: a program that quits
/// meanwhile need not wait for it.
QFuture<std::exception_ptr> convertOnWorker(const std::shared_ptr<ConversionRunner>& runner,
                                            const FileURL& source, const FileURL& destination,
                                            const ConversionSettings& settings,
                                            const ConversionRunner::ProgressHandler& onProgress);

} // namespace kestrel
