#pragma once

class QDBusConnection;
class QString;

namespace kestrel {

/// Makes the program known by this name to the desktop that the bus belongs to, without waiting for
/// the answer. While another instance has the name, this one stands in line for it. Main thread.
void requestBusName(const QDBusConnection& bus, const QString& name);

} // namespace kestrel
