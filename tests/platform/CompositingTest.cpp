#include "Compositing.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace kestrel {
namespace {

/// Owns the selection of the screen's compositing manager while it exists.
class FakeCompositingManager {
  public:
    FakeCompositingManager() {
        const std::string name = "_NET_WM_CM_S0";
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
            xcb_intern_atom_reply(connection_,
                                  xcb_intern_atom(connection_, 0,
                                                  static_cast<std::uint16_t>(name.size()),
                                                  name.data()),
                                  nullptr),
            std::free);
        const auto window = xcb_generate_id(connection_);
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(connection_, window, atom->atom, XCB_CURRENT_TIME);
        synchronise();
    }

    FakeCompositingManager(const FakeCompositingManager&) = delete;
    FakeCompositingManager& operator=(const FakeCompositingManager&) = delete;

    ~FakeCompositingManager() { xcb_disconnect(connection_); }

  private:
    /// Returns when the server has handled all requests.
    void synchronise() {
        std::free(
            xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    }

    xcb_connection_t* connection_ = xcb_connect(nullptr, nullptr);
};

TEST(Compositing, takesACompositingManagerOnX11) {
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
    EXPECT_FALSE(isCompositing());
    const FakeCompositingManager manager;
    EXPECT_TRUE(isCompositing());
}

} // namespace
} // namespace kestrel
