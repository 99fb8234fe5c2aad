#include "BatchPresence.h"

#include "Gate.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QGuiApplication>
#include <QWidget>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace kestrel {
namespace {

using test::runUntil;

/// Whether the window manager has given the window a state.
bool hasState(const QWidget& window, const std::string& state) {
    auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* connection = application->connection();
    const auto atom = [connection](const std::string& name) {
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection,
                                  xcb_intern_atom(connection, 0,
                                                  static_cast<std::uint16_t>(name.size()),
                                                  name.c_str()),
                                  nullptr),
            &std::free);
        return reply->atom;
    };
    constexpr std::uint32_t longs = 32;
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> states(
        xcb_get_property_reply(connection,
                               xcb_get_property(connection, 0,
                                                static_cast<xcb_window_t>(window.winId()),
                                                atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 0, longs),
                               nullptr),
        &std::free);
    const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(states.get()));
    const auto count =
        static_cast<std::size_t>(xcb_get_property_value_length(states.get())) / sizeof(xcb_atom_t);
    return std::count(first, first + count, atom(state)) > 0;
}

bool demandsAttention(const QWidget& window) {
    return hasState(window, "_NET_WM_STATE_DEMANDS_ATTENTION");
}

/// With an iconified window.
class AttentionTest : public ::testing::Test {
  protected:
    AttentionTest() {
        new BatchPresence(scenario_.model, &window_);
        other_.setWindowFlag(Qt::WindowDoesNotAcceptFocus);
    }

    void SetUp() override {
        other_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&other_, test::timeout));
        scenario_.add({"a.opus", "b.opus"});
        ASSERT_TRUE(showActive(window_));
    }

    bool iconify() {
        window_.showMinimized();
        return runUntil(
            [] { return QGuiApplication::applicationState() != Qt::ApplicationActive; });
    }

    bool waitUntilDemanded(bool isDemanded) {
        return runUntil([this, isDemanded] { return demandsAttention(window_) == isDemanded; });
    }

    /// Returns once the window manager has done all that was asked of it before.
    bool awaitWindowManager() {
        other_.setWindowState(other_.windowState() ^ Qt::WindowMaximized);
        return runUntil([this] {
            return hasState(other_, "_NET_WM_STATE_MAXIMIZED_VERT") ==
                   other_.windowState().testFlag(Qt::WindowMaximized);
        });
    }

    Scenario scenario_;
    QWidget window_;
    QWidget other_;
};

TEST_F(AttentionTest, isDemandedByAnInactiveWindowUntilItIsActive) {
    ASSERT_TRUE(iconify());
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_TRUE(waitUntilDemanded(true));
    window_.showNormal();
    ASSERT_TRUE(showActive(window_));
    EXPECT_TRUE(waitUntilDemanded(false));
}

TEST_F(AttentionTest, isDemandedOnlyUntilTheNextBatch) {
    ASSERT_TRUE(iconify());
    ASSERT_TRUE(scenario_.convertAll());
    ASSERT_TRUE(waitUntilDemanded(true));
    scenario_.add({"c.opus"});
    scenario_.holdBack("c.opus", 0.5);
    scenario_.start();
    EXPECT_TRUE(waitUntilDemanded(false));
}

TEST_F(AttentionTest, isNotDemandedBehindAnActivePanel) {
    QWidget panel;
    ASSERT_TRUE(showActive(panel));
    ASSERT_FALSE(window_.isActiveWindow());
    ASSERT_TRUE(scenario_.convertAll());
    settle();
    ASSERT_TRUE(awaitWindowManager());
    EXPECT_FALSE(demandsAttention(window_));
}

TEST_F(AttentionTest, isNotDemandedByAnActiveWindowNorAfterACancel) {
    ASSERT_TRUE(scenario_.convertAll());
    settle();
    ASSERT_TRUE(awaitWindowManager());
    EXPECT_FALSE(demandsAttention(window_));
    ASSERT_TRUE(iconify());
    scenario_.add({"c.opus"});
    scenario_.holdBack("c.opus", 0.5);
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(2));
    scenario_.model->cancel();
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    settle();
    ASSERT_TRUE(awaitWindowManager());
    EXPECT_FALSE(demandsAttention(window_));
}

} // namespace
} // namespace kestrel
