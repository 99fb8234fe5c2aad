#include "KeyboardFocus.h"

#include "ContinuousRectangle.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
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

void drawFocusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
    constexpr double width = 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    const double inset = width / 2;
    painter.drawPath(
        continuousRectangle(rect.adjusted(inset, inset, -inset, -inset), radius - inset));
    painter.restore();
}

} // namespace kestrel
