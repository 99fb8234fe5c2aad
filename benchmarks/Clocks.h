#pragma once

#include <sys/resource.h>

#include <ctime>

namespace kestrel::bench {

/// Seconds on one of the system's clocks.
inline double secondsOn(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Since some time in the past.
inline double wallSeconds() {
    return secondsOn(CLOCK_MONOTONIC);
}

/// What all threads of this process have taken.
inline double processSeconds() {
    return secondsOn(CLOCK_PROCESS_CPUTIME_ID);
}

/// What the children that have been waited for have taken.
inline double childrenSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

} // namespace kestrel::bench
