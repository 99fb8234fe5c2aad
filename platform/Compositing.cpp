#include "Compositing.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace kestrel {
namespace {

/// The number of the default screen, as `DISPLAY` names it.
int screenNumber() {
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    ::xcb_parse_display(nullptr, &host, &display, &screen);
    std::free(host);
    return screen;
}

template <typename Reply> std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
    return {reply, &std::free};
}

/// A compositing manager owns the screen's selection.
bool hasCompositingManager(xcb_connection_t* connection) {
    const std::string name = "_NET_WM_CM_S" + std::to_string(screenNumber());
    const auto atom = owned(::xcb_intern_atom_reply(
        connection,
        ::xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    if (!atom) {
        return false;
    }
    const auto owner = owned(::xcb_get_selection_owner_reply(
        connection, ::xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner && owner->owner != XCB_NONE;
}

} // namespace

bool isCompositing() {
    if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) {
        return hasCompositingManager(x11->connection());
    }
    return QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

} // namespace kestrel
