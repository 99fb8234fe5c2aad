#include "PortalParentWindow.h"

#include "WaylandResources.h"
#include "WaylandWindowExport.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace kestrel {

namespace {

using namespace Qt::StringLiterals;

/// Compositors answer within milliseconds, and the user is waiting for the panel.
constexpr std::chrono::milliseconds exportTimeout{1000};

} // namespace

PortalParentWindow::PortalParentWindow() = default;

PortalParentWindow::~PortalParentWindow() = default;

void PortalParentWindow::identify(Handler handler) {
    const QWidget* widget = QApplication::activeWindow();
    const QPointer<QWindow> window = widget == nullptr ? nullptr : widget->windowHandle();
    wl_display* display = window == nullptr ? nullptr : waylandResources(*window).display;
    if (display != nullptr) {
        export_ = std::make_unique<WaylandWindowExport>(
            display, [window] { return window ? waylandResources(*window).surface : nullptr; },
            exportTimeout,
            [handler = std::move(handler)](const QString& handle) {
                handler(handle.isEmpty() ? QString() : u"wayland:"_s + handle);
            });
        return;
    }
    const bool isOnX11 = window != nullptr && QGuiApplication::platformName() == u"xcb"_s;
    handler(isOnX11 ? u"x11:"_s + QString::number(window->winId(), 16) : QString());
}

} // namespace kestrel
