#include "LatencyProbe.h"

#include <algorithm>
#include <stop_token>

namespace kestrel::bench {

LatencyProbe::LatencyProbe() : thread_([this](const std::stop_token& stop) { postProbes(stop); }) {}

LatencyProbe::~LatencyProbe() = default;

std::chrono::duration<double, std::milli> LatencyProbe::longest() const {
    Clock::duration longest = longest_;
    if (const Clock::time_point since = pending_; since != Clock::time_point()) {
        longest = std::max(longest, Clock::now() - since);
    }
    return longest;
}

void LatencyProbe::postProbes(const std::stop_token& stop) {
    using namespace std::chrono_literals;
    while (!stop.stop_requested()) {
        if (pending_.load() == Clock::time_point()) {
            pending_ = Clock::now();
            QMetaObject::invokeMethod(this, &LatencyProbe::recordLatency, Qt::QueuedConnection);
        }
        std::this_thread::sleep_for(1ms);
    }
}

void LatencyProbe::recordLatency() {
    longest_ = std::max(longest_.load(), Clock::now() - pending_.load());
    pending_ = Clock::time_point();
}

} // namespace kestrel::bench
