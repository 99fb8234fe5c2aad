#include "DesktopFileViewer.h"

#include "FakeFileManager.h"
#include "PrivateBus.h"
#include "RunUntil.h"
#include "UrlHandler.h"

#include <gmock/gmock.h>

#include <memory>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

class DesktopFileViewerTest : public testing::Test {
  protected:
    bool waitForShown() {
        return runUntil([this] { return !manager_.shown().empty(); });
    }

    bool waitForOpened() {
        return runUntil([this] { return !handler_.opened().empty(); });
    }

    /// Waits until all messages sent so far have arrived.
    void settle() {
        QDBusConnection connection = client_;
        const QDBusMessage ping = QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
        connection.call(ping, QDBus::BlockWithGui);
        QCoreApplication::processEvents();
    }

    PrivateBus bus_;
    FakeFileManager manager_{bus_.connect()};
    QDBusConnection client_ = bus_.connect();
    UrlHandler handler_;
    DesktopFileViewer viewer_{[this] { return client_; }};
};

TEST_F(DesktopFileViewerTest, showsTheItemInTheFileManager) {
    viewer_.reveal(FileURL("/music/My #1 %"));
    ASSERT_TRUE(waitForShown());
    settle();
    EXPECT_THAT(manager_.shown(), ElementsAre(QStringList(u"file:///music/My%20%231%20%25"_s)));
    EXPECT_THAT(handler_.opened(), IsEmpty());
}

TEST_F(DesktopFileViewerTest, keepsTheBytesOfTheName) {
    viewer_.reveal(FileURL("/caf\xE9"));
    ASSERT_TRUE(waitForShown());
    EXPECT_THAT(manager_.shown(), ElementsAre(QStringList(u"file:///caf%E9"_s)));
}

TEST_F(DesktopFileViewerTest, opensTheContainingFolderOnAnError) {
    manager_.answer = FakeFileManager::Answer::Error;
    FileURL url("/music \xE9/out");
    viewer_.reveal(url);
    // The output folder may be another one by the time of the reply.
    url = FileURL("/elsewhere/out");
    ASSERT_TRUE(waitForOpened());
    EXPECT_EQ(manager_.shown().size(), 1U);
    ASSERT_EQ(handler_.opened().size(), 1U);
    EXPECT_EQ(handler_.opened().front().toEncoded(), "file:///music%20%E9");
}

TEST_F(DesktopFileViewerTest, opensTheContainingFolderWithoutAFileManager) {
    PrivateBus emptyBus;
    DesktopFileViewer viewer([connection = emptyBus.connect()] { return connection; });
    viewer.reveal(FileURL("/music/out"));
    ASSERT_TRUE(waitForOpened());
    EXPECT_THAT(handler_.opened(), ElementsAre(QUrl(u"file:///music"_s)));
}

TEST_F(DesktopFileViewerTest, opensTheContainingFolderWithoutABus) {
    DesktopFileViewer viewer(&disconnectedBus);
    viewer.reveal(FileURL("/out"));
    EXPECT_THAT(handler_.opened(), ElementsAre(QUrl(u"file:///"_s)));
}

TEST_F(DesktopFileViewerTest, leavesNoPendingCallWatcher) {
    manager_.answer = FakeFileManager::Answer::Error;
    viewer_.reveal(FileURL("/music/out"));
    ASSERT_TRUE(waitForOpened());
    EXPECT_TRUE(runUntil([this] { return viewer_.children().isEmpty(); }));
    DesktopFileViewer viewer(&disconnectedBus);
    viewer.reveal(FileURL("/music/out"));
    EXPECT_THAT(viewer.children(), IsEmpty());
}

TEST_F(DesktopFileViewerTest, usesTheSessionBusByDefault) {
    // The session bus is unreachable here.
    makeDesktopFileViewer()->reveal(FileURL("/music/out"));
    EXPECT_THAT(handler_.opened(), ElementsAre(QUrl(u"file:///music"_s)));
}

TEST_F(DesktopFileViewerTest, doesNotWaitForTheFileManager) {
    manager_.answer = FakeFileManager::Answer::None;
    viewer_.reveal(FileURL("/music/out"));
    // The fake runs on this thread: it cannot have been called yet.
    EXPECT_THAT(manager_.shown(), IsEmpty());
    ASSERT_TRUE(waitForShown());
    settle();
    EXPECT_THAT(handler_.opened(), IsEmpty());
}

TEST_F(DesktopFileViewerTest, mayBeDestroyedBeforeTheReply) {
    manager_.answer = FakeFileManager::Answer::Error;
    auto viewer = std::make_unique<DesktopFileViewer>([this] { return client_; });
    viewer->reveal(FileURL("/music/out"));
    viewer.reset();
    ASSERT_TRUE(waitForShown());
    settle();
    EXPECT_THAT(handler_.opened(), IsEmpty());
}

} // namespace
} // namespace kestrel::test
