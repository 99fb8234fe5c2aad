#include "UserInputFilter.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDragLeaveEvent>
#include <QEvent>
#include <QWidget>

namespace kestrel {

namespace {

/// The number of filters that live.
int filterCount = 0; // NOLINT(*-avoid-non-const-global-variables)

bool isUserInput(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonRelease:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::NonClientAreaMouseMove:
    case QEvent::ContextMenu:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::Gesture:
    case QEvent::GestureOverride:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

UserInputFilter::UserInputFilter() {
    QCoreApplication::instance()->installEventFilter(this);
    ++filterCount;
}

UserInputFilter::~UserInputFilter() {
    QCoreApplication::instance()->removeEventFilter(this);
    --filterCount;
}

bool UserInputFilter::eventFilter(QObject* watched, QEvent* event) {
    if (!isUserInput(event->type())) {
        return false;
    }
    // Ignored as well as filtered: the sender of a drop or a close event sees that it was refused.
    event->ignore();
    if (event->type() == QEvent::Drop) {
        // A drag that entered before the panel opened ends here.
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(watched, &leave);
    }
    return true;
}

bool isUserInputBlocked(const QWidget& widget) {
    const QWidget* modal = QApplication::activeModalWidget();
    return filterCount > 0 || (modal != nullptr && widget.window() != modal);
}

} // namespace kestrel
