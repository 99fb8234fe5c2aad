#include "MainThread.h"

#include "FatalError.h"
#include "FileDescriptor.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>

#include <sys/eventfd.h>
#include <unistd.h>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace kestrel {

namespace {

/// The tasks that wait. Other threads touch nothing of Qt here, only a mutex and a
/// descriptor: they may hand over a task while the application object goes away, and race detectors
/// can follow what passes from thread to thread.
class TaskQueue {
  public:
    static TaskQueue& shared() {
        // Never destroyed: a worker may be handing over a task while the program ends.
        static auto* const queue = new TaskQueue;
        return *queue;
    }

    /// Whether this is the main thread.
    bool isOwnThread() const noexcept { return std::this_thread::get_id() == owner_; }

    /// Main thread.
    void listen() {
        if (listener_) {
            return;
        }
        listener_ = new QSocketNotifier(wakeUps_.get(), QSocketNotifier::Read,
                                        QCoreApplication::instance());
        QObject::connect(listener_, &QSocketNotifier::activated, listener_, [this] { runNext(); });
    }

    /// Any thread.
    void push(std::function<void()> task) {
        std::unique_lock lock(mutex_);
        if (!isOwnThread()) {
            hasRoom_.wait(lock, [this] { return tasks_.size() < maximumLength; });
        }
        tasks_.push_back(std::move(task));
        constexpr std::uint64_t one = 1;
        // Fails only when 2^64 - 1 tasks wait.
        static_cast<void>(::write(wakeUps_.get(), &one, sizeof one) < 0);
    }

  private:
    TaskQueue() : wakeUps_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE)) {
        if (!wakeUps_) {
            fatalError("No descriptor is left for the main thread's tasks");
        }
    }

    // One wake-up a task, so that a task that runs an event loop of its own holds up no other.
    void runNext() {
        std::function<void()> task;
        {
            const std::lock_guard lock(mutex_);
            std::uint64_t one{};
            if (::read(wakeUps_.get(), &one, sizeof one) != sizeof one) {
                return;
            }
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        hasRoom_.notify_one();
        task();
    }

    /// The thread of the first call.
    const std::thread::id owner_ = std::this_thread::get_id();
    /// Other threads wait where more tasks than this are waiting: one that makes them faster than
    /// they can be run would take all memory.
    static constexpr std::size_t maximumLength = 1024;

    std::mutex mutex_;
    std::condition_variable hasRoom_;
    std::deque<std::function<void()>> tasks_;
    /// A counter that is as high as there are tasks.
    FileDescriptor wakeUps_;
    /// Belongs to the application object; none outside its life.
    QPointer<QSocketNotifier> listener_;
};

} // namespace

void runOnMainThread(std::function<void()> task) {
    TaskQueue& queue = TaskQueue::shared();
    if (queue.isOwnThread()) {
        queue.listen();
    }
    queue.push(std::move(task));
}

} // namespace kestrel
