#include "LauncherProgress.h"

#include "LauncherSignals.h"
#include "PrivateBus.h"
#include "ProcessCounts.h"
#include "RunUntil.h"
#include "ScopedVariable.h"
#include "SilentBus.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <optional>

namespace kestrel::test {
namespace {

class LauncherProgressTest : public testing::Test {
  public:
    LauncherProgressTest(const LauncherProgressTest&) = delete;
    LauncherProgressTest& operator=(const LauncherProgressTest&) = delete;

  protected:
    LauncherProgressTest() {
        QGuiApplication::setDesktopFileName(QStringLiteral("org.kestrel.Converter"));
        EXPECT_TRUE(runUntil([this] { return signals_.isListening(); }));
    }

    ~LauncherProgressTest() override { QGuiApplication::setDesktopFileName(name_); }

    std::size_t count() const { return signals_.updates.size(); }

    /// Shows it as soon as the bus is ready.
    static bool show(LauncherProgress& progress, double fraction) {
        return runUntil([&] { return progress.show(fraction); });
    }

    PrivateBus daemon_;
    ScopedVariable variable_{"DBUS_SESSION_BUS_ADDRESS", daemon_.address()};
    LauncherSignals signals_;

  private:
    const QString name_ = QGuiApplication::desktopFileName();
};

TEST_F(LauncherProgressTest, isShownForTheDesktopFileAndHiddenAtTheEnd) {
    std::optional<LauncherProgress> progress(std::in_place);
    ASSERT_TRUE(show(*progress, 0.25));
    ASSERT_TRUE(runUntil([this] { return count() == 1; }));
    EXPECT_EQ(signals_.updates[0].application, "application://org.kestrel.Converter.desktop");
    EXPECT_EQ(signals_.updates[0].progress, 0.25);
    EXPECT_TRUE(signals_.updates[0].isVisible);
    progress.reset();
    ASSERT_TRUE(runUntil([this] { return count() == 2; }));
    EXPECT_EQ(signals_.updates[1].application, "application://org.kestrel.Converter.desktop");
    EXPECT_FALSE(signals_.updates[1].isVisible);
}

TEST_F(LauncherProgressTest, hidesNothingThatWasNotShown) {
    std::optional<LauncherProgress> unused(std::in_place);
    LauncherProgress other;
    // By then, the bus is ready for the older one, too.
    ASSERT_TRUE(show(other, 0.25));
    unused.reset();
    ASSERT_TRUE(show(other, 0.5));
    ASSERT_TRUE(
        runUntil([this] { return count() > 0 && signals_.updates.back().progress == 0.5; }));
    EXPECT_EQ(count(), 2U);
}

TEST(LauncherProgressWithoutBusTest, isNotShown) {
    const SilentBus silent;
    const std::size_t before = ProcessCounts::now().descriptors;
    for (const std::string& address : {silent.address(), std::string("unix:path=/no-such-bus")}) {
        const ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", address);
        LauncherProgress progress;
        QCoreApplication::processEvents();
        EXPECT_FALSE(progress.show(0.5)) << address;
    }
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
}

} // namespace
} // namespace kestrel::test
