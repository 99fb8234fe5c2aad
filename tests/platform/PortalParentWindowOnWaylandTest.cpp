#include "FakePortal.h"
#include "PortalOpenPanel.h"
#include "PrivateBus.h"
#include "ProcessCounts.h"
#include "RunUntil.h"
#include "WaylandImporter.h"
#include "WaylandResources.h"

#include <QApplication>
#include <QMainWindow>
#include <QWindow>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;

class PortalParentWindowOnWayland : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(QGuiApplication::platformName(), u"wayland"_s); }

    bool showWindow() {
        window_.show();
        return runUntil([this] { return QApplication::activeWindow() == &window_; });
    }

    /// Runs a panel, which the user dismisses after `opened`.
    void runPanel(const std::function<void(const QString& parentWindow)>& opened) {
        portal_.onOpened = [&](const FakePortal::Request& request) {
            opened(request.parentWindow);
            portal_.respond(request, 1);
        };
        PortalOpenPanel(client_, {.title = "Choose"}, FileURL("/")).run();
    }

    PrivateBus bus_;
    FakePortal portal_{bus_.connect()};
    QDBusConnection client_ = bus_.connect();
    QMainWindow window_;
};

TEST_F(PortalParentWindowOnWayland, isKnownToTheCompositorUntilThePanelCloses) {
    ASSERT_TRUE(showWindow());
    WaylandImporter importer;
    importer.import(u"made up"_s);
    EXPECT_FALSE(importer.isValid());
    QString parent;
    runPanel([&](const QString& parentWindow) {
        parent = parentWindow;
        importer.import(parentWindow.mid(u"wayland:"_s.size()));
        EXPECT_TRUE(importer.isValid());
    });
    EXPECT_TRUE(parent.startsWith(u"wayland:"_s)) << parent.toStdString();
    EXPECT_TRUE(runUntil([&] { return !importer.isValid(); }));
}

TEST_F(PortalParentWindowOnWayland, isEmptyWithoutAWindow) {
    QString parent = u"not called"_s;
    runPanel([&](const QString& parentWindow) { parent = parentWindow; });
    EXPECT_EQ(parent, QString());
}

TEST_F(PortalParentWindowOnWayland, takesAWindowThatIsShown) {
    ASSERT_TRUE(showWindow());
    QWindow& window = *window_.windowHandle();
    EXPECT_NE(waylandResources(window).display, nullptr);
    EXPECT_NE(waylandResources(window).surface, nullptr);
    // The compositor would end the program for exporting its surface.
    window_.hide();
    EXPECT_EQ(waylandResources(window).display, nullptr);
    EXPECT_EQ(waylandResources(window).surface, nullptr);
}

TEST_F(PortalParentWindowOnWayland, leavesNoDescriptorOpen) {
    ASSERT_TRUE(showWindow());
    const auto ignore = [](const QString&) {};
    runPanel(ignore);
    const std::size_t before = ProcessCounts::now().descriptors;
    for (int i = 0; i < 5; ++i) {
        runPanel(ignore);
    }
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
}

} // namespace
} // namespace kestrel::test
