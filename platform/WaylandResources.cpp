#include "WaylandResources.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QString>
#include <QVersionNumber>
#include <QWindow>

#include <qpa/qplatformnativeinterface.h>

namespace kestrel {

// Qt has no public way to a window's surface. The calls go through the virtual table alone, so that
// the program needs none of Qt's private symbols and starts with any Qt 6.
WaylandResources waylandResources(QWindow& window) {
    if (!QGuiApplication::platformName().startsWith(QStringLiteral("wayland")) ||
        !hasKnownQtLayout(QLibraryInfo::version()) || window.handle() == nullptr) {
        return {};
    }
    QPlatformNativeInterface* native = QGuiApplication::platformNativeInterface();
    // A compositor disconnects a client that exports a surface without this role.
    if (native->nativeResourceForWindow("xdg_toplevel", &window) == nullptr) {
        return {};
    }
    return {
        static_cast<wl_display*>(native->nativeResourceForIntegration("wl_display")),
        static_cast<wl_surface*>(native->nativeResourceForWindow("surface", &window)),
    };
}

bool hasKnownQtLayout(const QVersionNumber& runningQt) {
    return runningQt.majorVersion() == QT_VERSION_MAJOR &&
           runningQt.minorVersion() == QT_VERSION_MINOR;
}

} // namespace kestrel
