#include "FirstFrame.h"

#include <QEvent>
#include <QMetaObject>
#include <QWidget>

#include <utility>

namespace kestrel {

FirstFrame::FirstFrame(QWidget& widget, std::function<void()> afterwards)
    : QObject(&widget), afterwards_(std::move(afterwards)) {
    widget.installEventFilter(this);
}

bool FirstFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // Queued: the frame is flushed before the next event-loop iteration.
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
