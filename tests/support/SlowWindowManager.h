#pragma once

#include <QGuiApplication>
#include <QWidget>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include <xcb/xcb.h>

namespace kestrel::test {

/// Keeps the window manager from the display as long as it lives, and brings Qt to what it believes
/// while the window manager has not answered. An X display's tests only; main thread.
class SlowWindowManager {
  public:
    SlowWindowManager() {
        xcb_grab_server(display_);
        xcb_flush(display_);
    }

    SlowWindowManager(const SlowWindowManager&) = delete;
    SlowWindowManager& operator=(const SlowWindowManager&) = delete;

    ~SlowWindowManager() {
        xcb_ungrab_server(display_);
        xcb_flush(display_);
    }

    /// Qt 6.4 to 6.11 take a window for active once their own request for that has come back to
    /// them, which this sends; the event loop has to run then.
    void bringBackRequestFor(const QWidget& window) const {
        constexpr std::string_view name = "_NET_ACTIVE_WINDOW";
        const auto cookie = xcb_intern_atom(display_, 0, name.size(), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
            xcb_intern_atom_reply(display_, cookie, nullptr), std::free);
        ASSERT_NE(atom, nullptr);
        xcb_client_message_event_t request{};
        request.response_type = XCB_CLIENT_MESSAGE;
        request.format = 32;
        request.window = static_cast<xcb_window_t>(window.winId());
        request.type = atom->atom;
        xcb_send_event(display_, 0, request.window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&request));
        xcb_flush(display_);
    }

  private:
    xcb_connection_t* display_ =
        qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
};

} // namespace kestrel::test
