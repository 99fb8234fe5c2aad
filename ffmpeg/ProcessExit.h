#pragma once

namespace kestrel {

/// How a child process ended.
struct ProcessExit {
    enum class Reason : unsigned char { exit, uncaughtSignal };

    Reason reason = Reason::exit;
    /// The exit status, or the number of the signal.
    int code = 0;

    friend bool operator==(const ProcessExit&, const ProcessExit&) = default;
};

} // namespace kestrel
