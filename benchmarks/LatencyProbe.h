#pragma once

#include <QObject>

#include <atomic>
#include <chrono>
#include <stop_token>
#include <thread>

namespace kestrel::bench {

/// Posts a probe to the main thread's event loop every millisecond and measures its latency, which
/// is what a click or a key press would wait. Main thread.
class LatencyProbe : public QObject {
  public:
    LatencyProbe();
    LatencyProbe(const LatencyProbe&) = delete;
    LatencyProbe& operator=(const LatencyProbe&) = delete;
    ~LatencyProbe() override;

    /// The longest latency since construction, including a probe that is still pending.
    std::chrono::duration<double, std::milli> longest() const;

  private:
    using Clock = std::chrono::steady_clock;

    void postProbes(const std::stop_token& stop);
    void recordLatency();

    std::atomic<Clock::duration> longest_{};
    /// When the pending probe was posted; the clock's epoch if none is pending.
    std::atomic<Clock::time_point> pending_{};
    std::jthread thread_;
};

} // namespace kestrel::bench
