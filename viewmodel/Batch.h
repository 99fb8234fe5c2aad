#pragma once

#include "ConverterViewModel.h"

#include <QFuture>
#include <qcoro/qcorotask.h>

#include <cstddef>
#include <exception>
#include <memory>
#include <stop_token>

namespace kestrel {

/// One pass over the queue, with the output folder and settings of its start. Main thread, except
/// for the conversions.
class ConverterViewModel::Batch {
  public:
    /// Copies the output folder and the settings. Requires: the output folder is set.
    Batch(std::shared_ptr<ConverterViewModel> model, std::stop_token stop);

    /// Converts the jobs at the indices that are valid when it is called, one after the other, then
    /// ends `isConverting`. Stops between two jobs if a stop was requested, and after a cancelled
    /// conversion. An index past the end by the time it is reached is a fatal error.
    static QCoro::Task<> run(Batch batch);

  private:
    /// Whether to continue with the next job.
    enum class Next : unsigned char { proceed, stop };

    QCoro::Task<> convertJobs();
    QCoro::Task<Next> convertJob(std::size_t position);
    /// Names the output and starts a worker. Throws std::bad_alloc.
    QFuture<std::exception_ptr> startConversion(const UUID& id, const FileURL& source);
    /// Sets the final state of the job; `failure` is null on success.
    Next record(const UUID& id, const std::exception_ptr& failure);

    std::shared_ptr<ConverterViewModel> model_;
    FileURL folder_;
    ConversionSettings settings_;
    std::stop_token stop_;
};

} // namespace kestrel
