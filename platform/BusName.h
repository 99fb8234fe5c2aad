#pragma once

class QDBusConnection;
class QString;

namespace kestrel {

/// Requests the well-known D-Bus name, without waiting for the reply. While another instance owns
/// the name, this one is queued for it. Main thread.
void requestBusName(const QDBusConnection& bus, const QString& name);

} // namespace kestrel
