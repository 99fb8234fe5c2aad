#include "BusName.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

namespace kestrel {

using namespace Qt::StringLiterals;

void requestBusName(const QDBusConnection& bus, const QString& name) {
    const QString service = u"org.freedesktop.DBus"_s;
    QDBusMessage request = QDBusMessage::createMethodCall(service, u"/org/freedesktop/DBus"_s,
                                                          service, u"RequestName"_s);
    constexpr uint noFlags = 0;
    request << name << noFlags;
    static_cast<void>(bus.send(request));
}

} // namespace kestrel
