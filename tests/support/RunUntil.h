#pragma once

#include "Timeout.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace kestrel::test {

/// Processes events until the condition holds or the timeout, in milliseconds, expires. Returns
/// whether it held. For conditions that need no event loop, use `waitUntil`.
inline bool runUntil(const std::function<bool()>& condition, int milliseconds = timeout) {
    const QDeadlineTimer deadline(milliseconds);
    // Ends processEvents() when there are no other events.
    QTimer wakeUp;
    wakeUp.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        // Outside exec(), processEvents() does not deliver DeferredDelete events.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

} // namespace kestrel::test
