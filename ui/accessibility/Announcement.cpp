#include "Announcement.h"

#include <QAccessible>

namespace kestrel {

Announcement::Announcement(QWidget* parent) : QWidget(parent) {
    // A widget without a size is not "showing" in AT-SPI, and screen readers skip it.
    setFixedSize(1, 1);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Announcement::announce(const QString& text) {
    setAccessibleName(text);
    // Screen readers speak a notification when it is shown. Qt 6.4 has no announcement event;
    // Qt 6.8 and 6.11 have.
    for (const QAccessible::Event type : {QAccessible::ObjectHide, QAccessible::ObjectShow}) {
        QAccessibleEvent event(this, type);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace kestrel
