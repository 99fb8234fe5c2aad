#pragma once

#include "ConversionRunner.h"
#include "FFmpegError.h"
#include "Timeout.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {

/// A fake runner with a script for each source, by file name; records its calls. A conversion
/// without a script succeeds immediately.
class ScriptedRunner final : public ConversionRunner {
  public:
    struct Call {
        FileURL source;
        FileURL destination;
        ConversionSettings settings;
    };

    /// Runs instead of the conversion, on its thread; may throw.
    using Script = std::function<void(const Call&, const ProgressHandler&)>;

    /// Run on the main thread: when a conversion is prepared, where it may throw, and after an
    /// interrupt.
    std::function<void()> onPrepare;
    std::function<void()> onInterrupt;

    /// Called on the main thread, before the conversion starts.
    void setScript(const std::string& fileName, Script script) {
        const std::lock_guard lock(mutex_);
        scripts_[fileName] = std::move(script);
    }

    void convert(const FileURL& source, const FileURL& destination,
                 const ConversionSettings& settings, const ProgressHandler& onProgress) override {
        const Call call{source, destination, settings};
        Script script;
        {
            const std::lock_guard lock(mutex_);
            calls_.push_back(call);
            interruptsBefore_ = interrupts_;
            const auto found = scripts_.find(std::string(source.lastPathComponent()));
            if (found != scripts_.end()) {
                script = found->second;
            }
        }
        if (script) {
            script(call, onProgress);
        }
    }

    void prepareConversion() override {
        if (onPrepare) {
            onPrepare();
        }
    }

    void interruptActiveProcess() override {
        {
            const std::lock_guard lock(mutex_);
            ++interrupts_;
            changed_.notify_all();
        }
        if (onInterrupt) {
            onInterrupt();
        }
    }

    std::vector<Call> calls() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }

    int interrupts() const {
        const std::lock_guard lock(mutex_);
        return interrupts_;
    }

    /// For scripts: blocks until `release` is called. Throws when `timeout` expires.
    void waitForRelease() {
        wait([this] { return isReleased_; });
    }

    void release() {
        const std::lock_guard lock(mutex_);
        isReleased_ = true;
        changed_.notify_all();
    }

    /// For scripts: blocks until an interrupt since the start of the conversion. Throws when
    /// `timeout` expires.
    void waitForInterrupt() {
        wait([this] { return interrupts_ > interruptsBefore_; });
    }

  private:
    template <typename Condition> void wait(Condition condition) {
        std::unique_lock lock(mutex_);
        if (!changed_.wait_for(lock, std::chrono::milliseconds(timeout), condition)) {
            throw std::runtime_error("the script timed out");
        }
    }

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, Script> scripts_;
    std::vector<Call> calls_;
    int interrupts_ = 0;
    int interruptsBefore_ = 0;
    bool isReleased_ = false;
};

} // namespace kestrel::test
