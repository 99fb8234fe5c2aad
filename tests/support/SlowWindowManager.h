#pragma once

#include <QGuiApplication>
#include <QWidget>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string_view>

#include <xcb/xcb.h>

namespace kestrel::test {

/// Simulates an unresponsive window manager: grabs the X server while it lives. X11 only. Called on
/// the main thread.
class SlowWindowManager {
  public:
    SlowWindowManager() {
        xcb_grab_server(connection_);
        xcb_flush(connection_);
    }

    SlowWindowManager(const SlowWindowManager&) = delete;
    SlowWindowManager& operator=(const SlowWindowManager&) = delete;

    ~SlowWindowManager() {
        xcb_ungrab_server(connection_);
        xcb_flush(connection_);
    }

    /// Sends Qt's own _NET_ACTIVE_WINDOW request back to the window, on which Qt 6.4 to 6.11
    /// consider it active. Takes effect in the event loop.
    void bringBackRequestFor(const QWidget& window) const {
        constexpr std::string_view name = "_NET_ACTIVE_WINDOW";
        const auto cookie = xcb_intern_atom(connection_, 0, name.size(), name.data());
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
            xcb_intern_atom_reply(connection_, cookie, nullptr), std::free);
        ASSERT_NE(atom, nullptr);
        xcb_client_message_event_t request{};
        request.response_type = XCB_CLIENT_MESSAGE;
        request.format = 32;
        request.window = static_cast<xcb_window_t>(window.winId());
        request.type = atom->atom;
        xcb_send_event(connection_, 0, request.window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&request));
        xcb_flush(connection_);
    }

  private:
    xcb_connection_t* connection_ =
        qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
};

} // namespace kestrel::test
