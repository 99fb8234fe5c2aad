#pragma once

#include "Timeout.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace kestrel::test {

/// Runs the event loop until the condition holds, at most that many milliseconds; tells whether it
/// came to hold. Where no event loop is needed, `waitUntil` does.
inline bool runUntil(const std::function<bool()>& condition, int milliseconds = timeout) {
    const QDeadlineTimer deadline(milliseconds);
    // Events end every turn but the idle ones, which this does.
    QTimer heartbeat;
    heartbeat.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        // As an event loop does by itself between its events.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

} // namespace kestrel::test
