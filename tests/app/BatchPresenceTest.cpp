#include "BatchPresence.h"

#include "FakeInhibitor.h"
#include "Gate.h"
#include "LauncherSignals.h"
#include "PrivateBus.h"
#include "ProcessCounts.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "ScopedVariable.h"
#include "SilentBus.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstddef>

namespace kestrel {
namespace {

using namespace Qt::StringLiterals;
using test::FakeInhibitor;
using test::runUntil;

/// The heap memory in use.
std::size_t usedBytes() {
    const struct mallinfo2 info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// With a session bus that has the portal, and no system bus.
class BatchPresenceTest : public ::testing::Test {
  protected:
    BatchPresenceTest() {
        EXPECT_TRUE(runUntil([this] { return signals_.isListening(); }));
        presence_ = new BatchPresence(scenario_.model, &window_);
    }

    /// Starts a batch of one file that waits at the gate.
    void startHeldBatch() {
        scenario_.add({"a.opus"});
        scenario_.holdBack("a.opus", 0.5);
        scenario_.start();
        EXPECT_TRUE(scenario_.waitForProgress(0));
    }

    void finishHeldBatch() {
        scenario_.gate.open();
        EXPECT_TRUE(scenario_.finish());
    }

    bool waitUntilHeld(std::size_t count) {
        return runUntil([this, count] { return portal_.held() == count; });
    }

    bool waitUntilShown(double progress) {
        return runUntil([this, progress] {
            return !signals_.updates.empty() && signals_.updates.back().isVisible &&
                   signals_.updates.back().progress == progress;
        });
    }

    bool waitUntilHidden() {
        return runUntil(
            [this] { return !signals_.updates.empty() && !signals_.updates.back().isVisible; });
    }

    test::PrivateBus session_;
    test::ScopedVariable variable_{"DBUS_SESSION_BUS_ADDRESS", session_.address()};
    FakeInhibitor portal_{session_.connect(), u"org.freedesktop.portal.Desktop"_s};
    test::LauncherSignals signals_;
    Scenario scenario_;
    QWidget window_;
    /// Owned by the window.
    BatchPresence* presence_ = nullptr;
};

TEST_F(BatchPresenceTest, asksForNothingBeforeABatch) {
    const std::size_t before = test::ProcessCounts::now().descriptors;
    scenario_.add({"a.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    settle();
    EXPECT_EQ(test::ProcessCounts::now().descriptors, before);
    EXPECT_TRUE(portal_.calls().empty());
    EXPECT_TRUE(signals_.updates.empty());
}

TEST_F(BatchPresenceTest, keepsTheMachineAwakeAndShowsTheProgressWhileABatchRuns) {
    startHeldBatch();
    ASSERT_TRUE(waitUntilHeld(1));
    scenario_.add({"b.opus"});
    ASSERT_TRUE(waitUntilShown(0.25)) << "half of one file of two";
    finishHeldBatch();
    EXPECT_TRUE(waitUntilHeld(0));
    EXPECT_TRUE(waitUntilHidden());
    EXPECT_EQ(portal_.calls().size(), 1U);
}

TEST_F(BatchPresenceTest, showsTheProgressOnceTheBusIsReady) {
    int attempts = 0;
    QObject::connect(presence_->findChild<QTimer*>(), &QTimer::timeout, presence_,
                     [&] { ++attempts; });
    session_.pause();
    startHeldBatch();
    // The first one after all reports.
    EXPECT_TRUE(runUntil([&] { return attempts > 0; }));
    session_.resume();
    EXPECT_TRUE(waitUntilShown(0.5));
    finishHeldBatch();
}

TEST_F(BatchPresenceTest, endsWithACancelledBatch) {
    startHeldBatch();
    ASSERT_TRUE(waitUntilHeld(1));
    scenario_.cancelAt("a.opus");
    scenario_.model->cancel();
    finishHeldBatch();
    EXPECT_TRUE(waitUntilHeld(0));
}

TEST_F(BatchPresenceTest, endsWithTheProgram) {
    startHeldBatch();
    ASSERT_TRUE(waitUntilHeld(1));
    ASSERT_TRUE(waitUntilShown(0.5));
    delete presence_;
    EXPECT_TRUE(waitUntilHeld(0));
    EXPECT_TRUE(waitUntilHidden());
}

TEST_F(BatchPresenceTest, sendsAtMostFiveSignalsASecond) {
    constexpr int reports = 2000;
    scenario_.add({"a.opus"});
    Gate isListening;
    scenario_.runner->setScript("a.opus", [&](const auto&, const auto& report) {
        isListening.pass();
        for (int number = 1; number < reports; ++number) {
            report(static_cast<double>(number) / reports);
        }
        scenario_.gate.pass();
    });
    QElapsedTimer time;
    time.start();
    scenario_.start();
    const bool isShown = waitUntilShown(0);
    isListening.open();
    ASSERT_TRUE(isShown);
    ASSERT_TRUE(waitUntilShown(static_cast<double>(reports - 1) / reports));
    finishHeldBatch();
    ASSERT_TRUE(waitUntilHidden());
    constexpr qint64 shortestPause = 285;
    EXPECT_LE(static_cast<qint64>(signals_.updates.size()), time.elapsed() / shortestPause + 2);
}

class BatchPresenceSoakTest : public BatchPresenceTest {};

TEST_F(BatchPresenceSoakTest, holdsOneInhibitorForEachBatchAndLeaksNone) {
    constexpr std::size_t batches = 500;
    constexpr std::size_t warmUp = 50;
    std::size_t descriptors = 0;
    std::size_t bytes = 0;
    for (std::size_t batch = 1; batch <= batches; ++batch) {
        Gate gate;
        scenario_.runner->setScript("a.opus", [&gate](const auto&, const auto&) { gate.pass(); });
        scenario_.add({"a.opus"});
        scenario_.start();
        const bool isHeld = waitUntilHeld(1);
        gate.open();
        ASSERT_TRUE(scenario_.finish());
        ASSERT_TRUE(isHeld) << batch;
        ASSERT_TRUE(waitUntilHeld(0)) << batch;
        ASSERT_EQ(portal_.takeCalls(), 1U) << batch;
        scenario_.model->remove(scenario_.model->jobs().front());
        settle();
        signals_.updates.clear();
        if (batch == warmUp) {
            descriptors = test::ProcessCounts::now().descriptors;
            bytes = usedBytes();
        }
    }
    EXPECT_EQ(test::ProcessCounts::now().descriptors, descriptors);
    // The fake runner remembers each conversion in some 250 bytes; a connection takes thousands.
    constexpr std::size_t bytesPerBatch = 500;
    EXPECT_LT(usedBytes(), bytes + (batches - warmUp) * bytesPerBatch);
}

TEST(BatchPresenceWithoutBusTest, runsABatchOnASilentBus) {
    const test::SilentBus silent;
    const test::ScopedVariable variable("DBUS_SESSION_BUS_ADDRESS", silent.address());
    Scenario scenario;
    QWidget window;
    new BatchPresence(scenario.model, &window);
    // The first worker's thread opens descriptors for good.
    scenario.add({"a.opus"});
    EXPECT_TRUE(scenario.convertAll());
    const std::size_t before = test::ProcessCounts::now().descriptors;
    scenario.add({"b.opus", "c.opus"});
    EXPECT_TRUE(scenario.convertAll());
    EXPECT_EQ(test::ProcessCounts::now().descriptors, before);
}

} // namespace
} // namespace kestrel
