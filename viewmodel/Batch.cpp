#include "Batch.h"

#include "ConversionWorker.h"
#include "FFmpegError.h"
#include "FatalError.h"
#include "MainThread.h"
#include "OutputName.h"

#include <qcoro/qcorofuture.h>

#include <new>
#include <utility>

namespace kestrel {

ConverterViewModel::Batch::Batch(std::shared_ptr<ConverterViewModel> model, std::stop_token stop)
    : model_(std::move(model)),
      folder_(model_->destination_.value()),
      settings_(model_->settings_),
      stop_(std::move(stop)) {}

// By value: the coroutine frame owns the batch.
QCoro::Task<> ConverterViewModel::Batch::run(Batch batch) {
    try {
        co_await batch.convertJobs();
    } catch (...) {
        // Out of memory while a failure was recorded: the batch ends all the same.
    }
    batch.model_->publish([&] { batch.model_->isConverting_ = false; });
}

QCoro::Task<> ConverterViewModel::Batch::convertJobs() {
    const std::size_t length = model_->jobs_.size();
    for (std::size_t position = 0; position < length; ++position) {
        // Before the range check: a cancelled batch never ends in the fatal error.
        if (stop_.stop_requested()) {
            co_return;
        }
        if (position >= model_->jobs_.size()) {
            fatalError("Index out of range: the batch went beyond the end of the queue");
        }
        if (model_->jobs_[position].state.is(JobState::Case::completed)) {
            continue;
        }
        const Next next = co_await convertJob(position);
        if (next == Next::stop) {
            co_return;
        }
    }
}

QCoro::Task<ConverterViewModel::Batch::Next>
ConverterViewModel::Batch::convertJob(std::size_t position) {
    const UUID id = model_->jobs_[position].id();
    const FileURL source = model_->jobs_[position].source();
    model_->setState(id, JobState::converting());
    model_->setProgress(id, 0.0);
    std::exception_ptr failure;
    try {
        failure = co_await startConversion(id, source);
    } catch (...) {
        // Out of memory on the main thread: the next job would need some, too.
        record(id, std::current_exception());
        co_return Next::stop;
    }
    co_return record(id, failure);
}

QFuture<std::exception_ptr> ConverterViewModel::Batch::startConversion(const UUID& id,
                                                                       const FileURL& source) {
    // Weak: a queued progress report does not keep the model alive.
    auto onProgress = [model = std::weak_ptr(model_), id](double fraction) {
        runOnMainThread([model, id, fraction] {
            if (const auto alive = model.lock()) {
                alive->setProgress(id, fraction);
            }
        });
    };
    return convertOnWorker(model_->dependencies_.service, source,
                           outputFile(source, folder_, settings_), settings_, onProgress);
}

ConverterViewModel::Batch::Next
ConverterViewModel::Batch::record(const UUID& id, const std::exception_ptr& failure) {
    if (!failure) {
        model_->setState(id, JobState::completed());
        model_->setProgress(id, 1.0);
        return Next::proceed;
    }
    try {
        std::rethrow_exception(failure);
    } catch (const FFmpegError& error) {
        if (error.which() == FFmpegError::Case::cancelled) {
            model_->setState(id, JobState::cancelled());
            return Next::stop;
        }
        model_->setState(id, JobState::failed(error.errorDescription()));
    } catch (const std::bad_alloc&) {
        model_->setState(id, JobState::failed(tr("There is not enough memory.").toStdString()));
    } catch (const std::exception& error) {
        model_->setState(id, JobState::failed(error.what()));
    }
    return Next::proceed;
}

} // namespace kestrel
