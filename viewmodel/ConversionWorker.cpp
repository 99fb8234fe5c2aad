#include "ConversionWorker.h"

#include "MainThread.h"

#include <QPromise>

#include <system_error>
#include <thread>
#include <utility>

namespace kestrel {

namespace {

using Outcome = QPromise<std::exception_ptr>;

void finish(Outcome& outcome, std::exception_ptr failure) {
    outcome.addResult(std::move(failure));
    outcome.finish();
}

} // namespace

QFuture<std::exception_ptr> convertOnWorker(const std::shared_ptr<ConversionRunner>& runner,
                                            const FileURL& source, const FileURL& destination,
                                            const ConversionSettings& settings,
                                            const ConversionRunner::ProgressHandler& onProgress) {
    // Used on the main thread only; the worker moves its reference there with the result.
    auto outcome = std::make_shared<Outcome>();
    outcome->start();
    QFuture<std::exception_ptr> future = outcome->future();
    runner->prepareConversion();
    try {
        std::thread([=]() mutable {
            std::exception_ptr failure;
            try {
                runner->convert(source, destination, settings, onProgress);
            } catch (...) {
                failure = std::current_exception();
            }
            runOnMainThread([outcome = std::move(outcome), failure = std::move(failure)] {
                finish(*outcome, failure);
            });
        }).detach();
    } catch (const std::system_error&) {
        finish(*outcome, std::current_exception());
    }
    return future;
}

} // namespace kestrel
