#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <stop_token>
#include <thread>

namespace kestrel::bench {

/// Knocks at the main thread every millisecond and notes how long it took to answer, as a click or
/// a key would have to wait. Main thread.
class LatencyProbe : public QObject {
  public:
    LatencyProbe();
    LatencyProbe(const LatencyProbe&) = delete;
    LatencyProbe& operator=(const LatencyProbe&) = delete;
    ~LatencyProbe() override;

    /// The longest wait since the watch began. An answer that is still due counts too.
    std::chrono::duration<double, std::milli> longest() const;

  private:
    using Clock = std::chrono::steady_clock;

    void knock(const std::stop_token& stop);
    void note();

    std::atomic<Clock::duration> longest_{};
    /// The knock that waits for its answer; the clock's beginning if none does.
    std::atomic<Clock::time_point> pending_{};
    std::jthread thread_;
};

} // namespace kestrel::bench
