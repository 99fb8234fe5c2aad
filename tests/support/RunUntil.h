#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace kestrel::test {

/// Runs the event loop until the condition holds, at most that many milliseconds; tells whether it
/// came to hold. Where no event loop is needed, `waitUntil` does.
inline bool runUntil(const std::function<bool()>& condition, int milliseconds = 10'000) {
    const QDeadlineTimer deadline(milliseconds);
    // Events end every turn but the idle ones, which this does.
    QTimer heartbeat;
    heartbeat.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace kestrel::test
