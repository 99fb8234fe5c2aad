#include "DesktopFileViewer.h"

#include "FakeFileManager.h"
#include "FakeUriPortal.h"
#include "FileUriConversion.h"
#include "PrivateBus.h"
#include "ProcessCounts.h"
#include "RunUntil.h"
#include "TemporaryFolder.h"
#include "UrlHandler.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// In milliseconds; Qt's own timeout of D-Bus calls is 25 seconds.
constexpr int belowDefaultTimeout = 20'000;

class DesktopFileViewerTest : public testing::Test {
  protected:
    bool waitForShown() {
        return runUntil([this] { return !manager_.shown().empty(); });
    }

    bool waitForOpened(int milliseconds = timeout) {
        return runUntil([this] { return !handler_.opened().empty(); }, milliseconds);
    }

    /// Waits until all messages sent so far have arrived.
    void settle() {
        QDBusConnection connection = client_;
        const QDBusMessage ping = QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
        connection.call(ping, QDBus::BlockWithGui);
        QCoreApplication::processEvents();
    }

    static bool waitForRequest(const FakeUriPortal& portal) {
        return runUntil([&] { return !portal.requests().empty(); });
    }

    std::vector<std::string> openedUris() const {
        std::vector<std::string> uris;
        for (const QUrl& url : handler_.opened()) {
            uris.push_back(url.toEncoded().toStdString());
        }
        return uris;
    }

    TemporaryFolder folder_;
    /// Exists; its name is not UTF-8.
    FileURL out_ = folder_.makeFolder("music \xE9/out");
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

TEST_F(DesktopFileViewerTest, opensTheFolderOnAnError) {
    manager_.answer = FakeFileManager::Answer::Error;
    FileURL url = out_;
    viewer_.reveal(url);
    // The output folder may be another one by the time of the reply.
    url = FileURL("/elsewhere/out");
    ASSERT_TRUE(waitForOpened());
    EXPECT_EQ(manager_.shown().size(), 1U);
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
}

TEST_F(DesktopFileViewerTest, opensTheFolderWithoutAFileManager) {
    PrivateBus emptyBus;
    DesktopFileViewer viewer([connection = emptyBus.connect()] { return connection; });
    viewer.reveal(out_);
    ASSERT_TRUE(waitForOpened());
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
}

TEST_F(DesktopFileViewerTest, opensTheFolderWithoutABus) {
    DesktopFileViewer viewer(&disconnectedBus);
    viewer.reveal(out_);
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
}

TEST_F(DesktopFileViewerTest, opensTheContainingFolderOfOneThatIsGone) {
    DesktopFileViewer viewer(&disconnectedBus);
    viewer.reveal(FileURL(out_.path() + "/gone"));
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
}

TEST_F(DesktopFileViewerTest, opensTheFolderIfTheFileManagerDoesNotReplyInTime) {
    manager_.answer = FakeFileManager::Answer::None;
    DesktopFileViewer viewer([this] { return client_; }, 50ms);
    viewer.reveal(out_);
    ASSERT_TRUE(waitForOpened(belowDefaultTimeout));
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
}

TEST_F(DesktopFileViewerTest, hasThePortalOpenTheFolderWithoutAFileManager) {
    manager_.answer = FakeFileManager::Answer::Error;
    FakeUriPortal portal(bus_.connect());
    viewer_.reveal(out_);
    ASSERT_TRUE(waitForRequest(portal));
    EXPECT_EQ(portal.requests().front().method, u"OpenFile"_s);
    EXPECT_EQ(portal.requests().front().path, out_.path());
    EXPECT_TRUE(runUntil([this] { return viewer_.children().isEmpty(); }));
    EXPECT_THAT(handler_.opened(), IsEmpty());
}

TEST_F(DesktopFileViewerTest, hasThePortalOpenTheContainingFolderOfOneThatIsGone) {
    manager_.answer = FakeFileManager::Answer::Error;
    FakeUriPortal portal(bus_.connect());
    viewer_.reveal(FileURL(out_.path() + "/gone"));
    ASSERT_TRUE(waitForRequest(portal));
    EXPECT_EQ(portal.requests().front().path, out_.path());
}

TEST_F(DesktopFileViewerTest, hasThePortalSelectTheFolderWhereItIsRefusedTheFileManager) {
    manager_.answer = FakeFileManager::Answer::Refusal;
    FakeUriPortal portal(bus_.connect());
    viewer_.reveal(out_);
    ASSERT_TRUE(waitForRequest(portal));
    EXPECT_EQ(portal.requests().front().method, u"OpenDirectory"_s);
    EXPECT_EQ(portal.requests().front().path, out_.path());
}

TEST_F(DesktopFileViewerTest, opensTheFolderIfThePortalFails) {
    manager_.answer = FakeFileManager::Answer::Refusal;
    FakeUriPortal portal(bus_.connect());
    portal.answer = FakeUriPortal::Answer::Error;
    viewer_.reveal(out_);
    ASSERT_TRUE(waitForOpened());
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
}

TEST_F(DesktopFileViewerTest, opensTheFolderIfThePortalDoesNotReplyInTime) {
    manager_.answer = FakeFileManager::Answer::Error;
    FakeUriPortal portal(bus_.connect());
    portal.answer = FakeUriPortal::Answer::None;
    DesktopFileViewer viewer([this] { return client_; }, 500ms);
    viewer.reveal(out_);
    ASSERT_TRUE(waitForOpened(belowDefaultTimeout));
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
    EXPECT_TRUE(waitForRequest(portal));
}

TEST_F(DesktopFileViewerTest, opensTheFolderIfThePortalOpensNothing) {
    constexpr uint other = 2;
    manager_.answer = FakeFileManager::Answer::Error;
    FakeUriPortal portal(bus_.connect());
    portal.response = other;
    viewer_.reveal(out_);
    ASSERT_TRUE(waitForOpened());
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
    EXPECT_TRUE(runUntil([this] { return viewer_.children().isEmpty(); }));
}

TEST_F(DesktopFileViewerTest, opensNothingElseIfTheUserClosesThePortalsDialog) {
    constexpr uint cancelled = 1;
    manager_.answer = FakeFileManager::Answer::Error;
    FakeUriPortal portal(bus_.connect());
    portal.response = cancelled;
    viewer_.reveal(out_);
    ASSERT_TRUE(waitForRequest(portal));
    EXPECT_TRUE(runUntil([this] { return viewer_.children().isEmpty(); }));
    EXPECT_THAT(handler_.opened(), IsEmpty());
}

TEST_F(DesktopFileViewerTest, waitsForThePortalsUser) {
    manager_.answer = FakeFileManager::Answer::Error;
    FakeUriPortal portal(bus_.connect());
    portal.response = std::nullopt;
    viewer_.reveal(out_);
    ASSERT_TRUE(waitForRequest(portal));
    settle();
    EXPECT_THAT(handler_.opened(), IsEmpty());
}

TEST_F(DesktopFileViewerTest, leavesNoDescriptorOpen) {
    manager_.answer = FakeFileManager::Answer::Error;
    FakeUriPortal portal(bus_.connect());
    std::size_t before = 0;
    for (std::size_t i = 1; i <= 5; ++i) {
        viewer_.reveal(out_);
        ASSERT_TRUE(runUntil(
            [&] { return portal.requests().size() == i && viewer_.children().isEmpty(); }));
        if (i == 1) {
            before = ProcessCounts::now().descriptors;
        }
    }
    EXPECT_TRUE(runUntil([&] { return ProcessCounts::now().descriptors == before; }));
}

TEST_F(DesktopFileViewerTest, leavesNoPendingCallWatcher) {
    manager_.answer = FakeFileManager::Answer::Error;
    viewer_.reveal(out_);
    ASSERT_TRUE(waitForOpened());
    EXPECT_TRUE(runUntil([this] { return viewer_.children().isEmpty(); }));
    DesktopFileViewer viewer(&disconnectedBus);
    viewer.reveal(out_);
    EXPECT_THAT(viewer.children(), IsEmpty());
}

TEST_F(DesktopFileViewerTest, usesTheSessionBusByDefault) {
    // The session bus is unreachable here.
    makeDesktopFileViewer()->reveal(out_);
    EXPECT_THAT(openedUris(), ElementsAre(uriFromFileUrl(out_)));
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
