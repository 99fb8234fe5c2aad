#pragma once

#include <sys/resource.h>

#include <ctime>

namespace kestrel::bench {

/// The time of a system clock in seconds.
inline double secondsOn(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Monotonic, from an arbitrary epoch.
inline double wallSeconds() {
    return secondsOn(CLOCK_MONOTONIC);
}

/// CPU time of all threads of this process.
inline double processSeconds() {
    return secondsOn(CLOCK_PROCESS_CPUTIME_ID);
}

/// CPU time of the reaped children.
inline double childrenSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

} // namespace kestrel::bench
