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

/// The posted tasks. Other threads use no Qt object, only a mutex and an eventfd: they may post
/// while the application object is destroyed, and race detectors see the synchronisation.
class TaskQueue {
  public:
    static TaskQueue& shared() {
        // Never destroyed: a worker may post a task while the program exits.
        static auto* const queue = new TaskQueue;
        return *queue;
    }

    bool isMainThread() const noexcept { return std::this_thread::get_id() == mainThread_; }

    /// Creates the socket notifier if there is none. Main thread.
    void listen() {
        if (notifier_) {
            return;
        }
        notifier_ = new QSocketNotifier(eventFd_.get(), QSocketNotifier::Read,
                                        QCoreApplication::instance());
        QObject::connect(notifier_, &QSocketNotifier::activated, notifier_, [this] { runNext(); });
    }

    /// Thread-safe; blocks other threads while the queue is full.
    void push(std::function<void()> task) {
        std::unique_lock lock(mutex_);
        if (!isMainThread()) {
            notFull_.wait(lock, [this] { return tasks_.size() < capacity; });
        }
        tasks_.push_back(std::move(task));
        constexpr std::uint64_t one = 1;
        // Fails only if the counter would exceed 2^64 - 2.
        static_cast<void>(::write(eventFd_.get(), &one, sizeof one) < 0);
    }

  private:
    TaskQueue() : eventFd_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE)) {
        if (!eventFd_) {
            fatalError("Cannot create an eventfd for the main thread's tasks");
        }
    }

    // One task per activation, so that a nested event loop in a task does not block the others.
    void runNext() {
        std::function<void()> task;
        {
            const std::lock_guard lock(mutex_);
            std::uint64_t one{};
            if (::read(eventFd_.get(), &one, sizeof one) != sizeof one) {
                return;
            }
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        notFull_.notify_one();
        task();
    }

    /// The thread of the first call.
    const std::thread::id mainThread_ = std::this_thread::get_id();
    /// Bounded queue: other threads block while it is full (backpressure), since a producer faster
    /// than the main thread would exhaust memory.
    static constexpr std::size_t capacity = 1024;

    std::mutex mutex_;
    std::condition_variable notFull_;
    std::deque<std::function<void()>> tasks_;
    /// An eventfd semaphore; counts the queued tasks.
    FileDescriptor eventFd_;
    /// Owned by the application object; null without one.
    QPointer<QSocketNotifier> notifier_;
};

} // namespace

void runOnMainThread(std::function<void()> task) {
    TaskQueue& queue = TaskQueue::shared();
    if (queue.isMainThread()) {
        queue.listen();
    }
    queue.push(std::move(task));
}

} // namespace kestrel
