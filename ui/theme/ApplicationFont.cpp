#include "ApplicationFont.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

namespace kestrel {

ApplicationFont* ApplicationFont::shared() {
    static QPointer<ApplicationFont> instance;
    if (instance == nullptr) {
        instance = new ApplicationFont(QCoreApplication::instance());
        QCoreApplication::instance()->installEventFilter(instance);
    }
    return instance;
}

bool ApplicationFont::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationFontChange && watched == QCoreApplication::instance()) {
        Q_EMIT changed();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace kestrel
