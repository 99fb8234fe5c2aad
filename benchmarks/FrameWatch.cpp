#include "FrameWatch.h"

#include "FatalError.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QWidget>

#include <chrono>

namespace kestrel::bench {

FrameWatch::FrameWatch(QObject& window) : window_(window) {
    using namespace std::chrono_literals;
    deadline_.setInterval(10s);
    connect(&deadline_, &QTimer::timeout, this, [] { fatalError("no frame was painted"); });
    qApp->installEventFilter(this);
}

bool FrameWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && !isPainted_) {
        const auto* widget = qobject_cast<const QWidget*>(watched);
        isPainted_ = widget != nullptr && widget->window() == &window_;
    }
    return false;
}

void FrameWatch::waitForFrame() {
    isPainted_ = false;
    deadline_.start();
    while (!isPainted_) {
        // The frame is flushed to the window system in the same event-loop iteration.
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    deadline_.stop();
}

void FrameWatch::settle() {
    constexpr int settleMilliseconds = 200;
    QElapsedTimer elapsed;
    elapsed.start();
    while (!elapsed.hasExpired(settleMilliseconds)) {
        constexpr int milliseconds = 20;
        QCoreApplication::processEvents(QEventLoop::AllEvents, milliseconds);
    }
}

} // namespace kestrel::bench
