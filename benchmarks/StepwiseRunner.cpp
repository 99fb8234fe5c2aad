#include "StepwiseRunner.h"

#include "FFmpegError.h"

#include <utility>

namespace kestrel::bench {

void StepwiseRunner::convert(const FileURL&, const FileURL&, const ConversionSettings&,
                             const ProgressHandler& onProgress) {
    std::unique_lock lock(mutex_);
    if (endingAtOnce_ > 0) {
        --endingAtOnce_;
        return;
    }
    onProgress_ = onProgress;
    changed_.wait(lock, [this] { return ending_ != Ending::none; });
    if (std::exchange(ending_, Ending::none) == Ending::cancellation) {
        throw FFmpegError::cancelled();
    }
}

void StepwiseRunner::interruptActiveProcess() {
    end(Ending::cancellation);
}

bool StepwiseRunner::isWaiting() {
    const std::lock_guard lock(mutex_);
    return onProgress_ != nullptr;
}

void StepwiseRunner::report(double fraction) {
    const std::lock_guard lock(mutex_);
    onProgress_(fraction);
}

void StepwiseRunner::end() {
    end(Ending::success);
}

void StepwiseRunner::end(Ending ending) {
    const std::lock_guard lock(mutex_);
    ending_ = ending;
    onProgress_ = nullptr;
    changed_.notify_all();
}

void StepwiseRunner::endAtOnce(std::size_t count) {
    const std::lock_guard lock(mutex_);
    endingAtOnce_ = count;
}

} // namespace kestrel::bench
