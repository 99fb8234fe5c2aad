#pragma once

#include "ConverterViewModel.h"

#include <qcoro/qcorotask.h>

#include <cstddef>
#include <exception>
#include <memory>
#include <stop_token>

namespace kestrel {

/// One run over the queue: what was set when it started, and the walk itself. Main thread, except
/// for the conversions.
class ConverterViewModel::Batch {
  public:
    /// Takes its copies of the output folder, which must be set, and of the settings.
    Batch(std::shared_ptr<ConverterViewModel> model, std::stop_token stop);

    /// Converts the jobs that stand at the positions filled when it is called, one after the other,
    /// and ends the model's converting. Stops between two jobs when that was requested, and at a
    /// conversion that was cancelled. A position that is empty by the time the walk gets there is a
    /// fatal error.
    static QCoro::Task<> run(Batch batch);

  private:
    /// Whether the walk goes on to the next position.
    enum class Next : unsigned char { goOn, stop };

    QCoro::Task<> walk();
    QCoro::Task<Next> convertJob(std::size_t position);
    /// Writes how the conversion of that job ended.
    Next record(const UUID& id, const std::exception_ptr& failure);

    std::shared_ptr<ConverterViewModel> model_;
    FileURL folder_;
    ConversionSettings settings_;
    std::stop_token stop_;
};

} // namespace kestrel
