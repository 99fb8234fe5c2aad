#include "KeyboardFocus.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace kestrel {

KeyboardFocus* KeyboardFocus::instance() {
    static QPointer<KeyboardFocus> instance;
    if (instance == nullptr) {
        instance = new KeyboardFocus(qApp);
        qApp->installEventFilter(instance);
    }
    return instance;
}

void KeyboardFocus::watch() {
    instance();
}

bool KeyboardFocus::isShownOn(const QWidget& widget) {
    return instance()->isKeyboardInUse_ && widget.hasFocus();
}

bool KeyboardFocus::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey =
        event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (isKey || event->type() == QEvent::MouseButtonPress) {
        const bool isChange = isKeyboardInUse_ != isKey;
        isKeyboardInUse_ = isKey;
        if (QWidget* focus = QApplication::focusWidget(); isChange && focus != nullptr) {
            focus->update();
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kestrel
