#include "UserFont.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

namespace kestrel {

UserFont* UserFont::shared() {
    static QPointer<UserFont> instance;
    if (instance == nullptr) {
        instance = new UserFont(QCoreApplication::instance());
        QCoreApplication::instance()->installEventFilter(instance);
    }
    return instance;
}

bool UserFont::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationFontChange && watched == QCoreApplication::instance()) {
        Q_EMIT changed();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kestrel
