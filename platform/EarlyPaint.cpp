#include "EarlyPaint.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

#include <xcb/xcb.h>

namespace kestrel {

void paintBeforeExposure(QWidget& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || !window.isVisible() || window.windowHandle()->isExposed()) {
        return;
    }
    // The request to map the window may still be buffered.
    ::xcb_flush(x11->connection());
    // Qt 6.4 to 6.11 set it with the first expose event, and paint no window without it.
    window.setAttribute(Qt::WA_Mapped);
    window.repaint();
}

} // namespace kestrel
