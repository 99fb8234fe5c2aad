#pragma once

#include <condition_variable>
#include <mutex>

namespace kestrel {

/// One-shot latch: blocks threads until it is opened, for good. Thread-safe.
class Gate {
  public:
    void pass() {
        std::unique_lock lock(mutex_);
        opened_.wait(lock, [this] { return isOpen_; });
    }

    void open() {
        const std::lock_guard lock(mutex_);
        isOpen_ = true;
        opened_.notify_all();
    }

  private:
    std::mutex mutex_;
    std::condition_variable opened_;
    bool isOpen_ = false;
};

} // namespace kestrel
