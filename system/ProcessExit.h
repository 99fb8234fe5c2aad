#pragma once

namespace kestrel {

/// How a child process ended.
struct ProcessExit {
    enum class Reason : unsigned char { exit, uncaughtSignal };

    Reason reason;
    /// The exit status or the signal number.
    int code;

    friend bool operator==(const ProcessExit&, const ProcessExit&) = default;
};

} // namespace kestrel
