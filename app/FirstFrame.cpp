#include "FirstFrame.h"

#include <QEvent>
#include <QMetaObject>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace kestrel {

FirstFrame::FirstFrame(QWidget& window, std::function<void()> afterwards)
    : QObject(&window), afterwards_(std::move(afterwards)) {
    window.installEventFilter(this);
}

bool FirstFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched == parent()) {
        // The native window exists now.
        qobject_cast<QWidget*>(watched)->windowHandle()->installEventFilter(this);
        watched->removeEventFilter(this);
    } else if (const auto* native = qobject_cast<QWindow*>(watched);
               event->type() == QEvent::Expose && native->isExposed()) {
        watched->removeEventFilter(this);
        // Queued: Qt paints and flushes the frame when it handles this event.
        QMetaObject::invokeMethod(
            this,
            [this] {
                afterwards_();
                deleteLater();
            },
            Qt::QueuedConnection);
    }
    return false;
}

} // namespace kestrel
