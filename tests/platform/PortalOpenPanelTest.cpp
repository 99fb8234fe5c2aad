#include "PortalFilter.h"
#include "PortalOpenPanelFixture.h"
#include "ProcessCounts.h"
#include "RunUntil.h"
#include "ScopedVariable.h"
#include "TemporaryFolder.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QTimer>

#include <fnmatch.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

class PortalOpenPanelTest : public PortalOpenPanelFixture {
  protected:
    /// The "current_folder" option of each request.
    std::vector<std::string> startFolders() const {
        std::vector<std::string> result;
        for (const FakePortal::Request& request : portal_.requests()) {
            const QByteArray folder = request.options.value(u"current_folder"_s).toByteArray();
            EXPECT_TRUE(folder.endsWith('\0'));
            result.push_back(folder.chopped(1).toStdString());
        }
        return result;
    }
};

TEST_F(PortalOpenPanelTest, asksForFiles) {
    runAndRespond(cancelled);
    ASSERT_EQ(portal_.requests().size(), 1U);
    const FakePortal::Request& request = portal_.requests().front();
    EXPECT_EQ(request.title, u"Choose Opus audio to convert"_s);
    EXPECT_EQ(request.parentWindow, QString());
    EXPECT_EQ(request.options.value(u"accept_label"_s).toString(), u"Add Audio"_s);
    EXPECT_EQ(request.options.value(u"modal"_s), QVariant(true));
    EXPECT_EQ(request.options.value(u"multiple"_s), QVariant(true));
    EXPECT_EQ(request.options.value(u"directory"_s), QVariant(false));
}

TEST_F(PortalOpenPanelTest, filtersByExtensionCaseInsensitively) {
    runAndRespond(cancelled);
    ASSERT_EQ(portal_.requests().size(), 1U);
    const QVariant value = portal_.requests().front().options.value(u"filters"_s);
    EXPECT_EQ(value.value<QDBusArgument>().currentSignature(), u"a(sa(us))"_s);
    const auto filters = qdbus_cast<QList<PortalFilter>>(value);
    ASSERT_EQ(filters.size(), 1);
    EXPECT_EQ(filters[0].name, u"Supported files"_s);
    std::vector<QString> globs;
    for (const PortalFilter::Pattern& pattern : filters[0].patterns) {
        EXPECT_EQ(pattern.kind, 0U);
        globs.push_back(pattern.text);
    }
    // The others are for names that are not UTF-8.
    std::erase_if(globs, [](const QString& glob) { return glob.contains(u'\uFFFD'); });
    EXPECT_THAT(globs, ElementsAre(u"*.[oO][pP][uU][sS]"_s, u"*.[mM][pP]3"_s));
}

TEST_F(PortalOpenPanelTest, filtersNamesThatAreNotUtf8AsGtkShowsThem) {
    runAndRespond(cancelled);
    ASSERT_EQ(portal_.requests().size(), 1U);
    const auto filters =
        qdbus_cast<QList<PortalFilter>>(portal_.requests().front().options.value(u"filters"_s));
    ASSERT_EQ(filters.size(), 1);
    const auto isOffered = [&](const QString& shownName) {
        return std::any_of(filters[0].patterns.begin(), filters[0].patterns.end(),
                           [&](const PortalFilter::Pattern& pattern) {
                               return ::fnmatch(pattern.text.toUtf8().constData(),
                                                shownName.toUtf8().constData(), 0) == 0;
                           });
    };
    const std::string encoding = ::setlocale(LC_CTYPE, nullptr);
    ASSERT_NE(::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
    for (const QString& remark :
         {u" (invalid encoding)"_s, u"  (ترميز غير سليم)"_s, u"(անվավեր կոդավորում)"_s,
          u" （无效的编码）"_s, u"（無效的編碼）"_s}) {
        EXPECT_TRUE(isOffered(u"caf\uFFFD.opus"_s + remark)) << remark.toStdString();
        EXPECT_TRUE(isOffered(u"\uFFFDa.b.OPUS"_s + remark)) << remark.toStdString();
        EXPECT_FALSE(isOffered(u"caf\uFFFD.wav"_s + remark)) << remark.toStdString();
        EXPECT_FALSE(isOffered(u"caf\uFFFD.opus.bak"_s + remark)) << remark.toStdString();
        EXPECT_FALSE(isOffered(u"caf\uFFFD.opus (1)"_s + remark)) << remark.toStdString();
        EXPECT_FALSE(isOffered(u"caf\uFFFD.opus(1)"_s + remark)) << remark.toStdString();
        EXPECT_FALSE(isOffered(u"caf\uFFFD.opus copy"_s + remark)) << remark.toStdString();
    }
    EXPECT_TRUE(isOffered(u"plain.Opus"_s));
    EXPECT_FALSE(isOffered(u"plain.opus (invalid encoding)"_s));
    EXPECT_FALSE(isOffered(u"plain.wav"_s));
    static_cast<void>(::setlocale(LC_CTYPE, encoding.c_str()));
}

TEST_F(PortalOpenPanelTest, asksForAFolder) {
    portal_.onOpened = [this](const auto& request) {
        portal_.respond(request, success, {u"file:///music/new"_s});
    };
    EXPECT_EQ(panel_.runModal(folderOptions()), Chosen({FileURL("/music/new")}));
    ASSERT_EQ(portal_.requests().size(), 1U);
    const QVariantMap& options = portal_.requests().front().options;
    EXPECT_EQ(options.value(u"directory"_s), QVariant(true));
    EXPECT_EQ(options.value(u"multiple"_s), QVariant(false));
    EXPECT_FALSE(options.contains(u"filters"_s));
}

TEST_F(PortalOpenPanelTest, asksForSeveralFolders) {
    OpenPanel::Options options = folderOptions();
    options.allowsMultipleSelection = true;
    portal_.onOpened = [this](const auto& request) {
        portal_.respond(request, success, {u"file:///b"_s, u"file:///a"_s});
    };
    EXPECT_EQ(panel_.runModal(options), Chosen({FileURL("/b"), FileURL("/a")}));
    EXPECT_EQ(portal_.requests().front().options.value(u"multiple"_s), QVariant(true));
}

TEST_F(PortalOpenPanelTest, escapesUnderscoresOfTheConfirmButton) {
    OpenPanel::Options options = fileOptions();
    options.prompt = "add_audio";
    portal_.onOpened = [this](const auto& request) { portal_.respond(request, cancelled); };
    panel_.runModal(options);
    EXPECT_EQ(portal_.requests().front().options.value(u"accept_label"_s).toString(),
              u"add__audio"_s);
}

TEST_F(PortalOpenPanelTest, returnsTheBytesOfTheChosenUrisInOrder) {
    EXPECT_EQ(runAndRespond(success, {u"file:///z%20%23.opus"_s, u"file:///caf%E9.opus"_s}),
              Chosen({FileURL("/z #.opus"), FileURL("/caf\xE9.opus")}));
    EXPECT_EQ(qtDialogs_.count(), 0);
}

TEST_F(PortalOpenPanelTest, skipsUrisThatNameNoLocalFile) {
    EXPECT_EQ(runAndRespond(success, {u"sftp://host/a"_s, u"file:///b"_s, u"file:///a%00"_s}),
              Chosen({FileURL("/b")}));
    EXPECT_EQ(runAndRespond(success, {}), Chosen(std::vector<FileURL>()));
}

TEST(OpenPanelOptions, chooseOneExistingFileUnlessSetOtherwise) {
    const OpenPanel::Options options;
    EXPECT_TRUE(options.canChooseFiles);
    EXPECT_FALSE(options.canChooseDirectories);
    EXPECT_FALSE(options.canCreateDirectories);
    EXPECT_FALSE(options.allowsMultipleSelection);
}

TEST_F(PortalOpenPanelTest, returnsNoneWhenDismissed) {
    EXPECT_EQ(runAndRespond(cancelled), std::nullopt);
    EXPECT_EQ(portal_.requests().size(), 1U);
    EXPECT_EQ(qtDialogs_.count(), 0);
}

TEST_F(PortalOpenPanelTest, acceptsAResponseBeforeTheReply) {
    portal_.onOpen = [this](const auto& request) {
        portal_.respond(request, success, {u"file:///a"_s});
    };
    EXPECT_EQ(panel_.runModal(fileOptions()), Chosen({FileURL("/a")}));
}

TEST_F(PortalOpenPanelTest, acceptsAResponseAtAPathThatThePortalChose) {
    portal_.otherRequestPath = u"/org/freedesktop/portal/desktop/request/old/7"_s;
    portal_.onOpened = [this](const auto& request) {
        portal_.respond(request, success, {u"file:///a"_s});
    };
    EXPECT_EQ(panel_.runModal(fileOptions()), Chosen({FileURL("/a")}));
}

TEST_F(PortalOpenPanelTest, ignoresResponsesToOtherRequests) {
    portal_.onOpened = [this](const FakePortal::Request& request) {
        FakePortal::Request other = request;
        other.path += u"x"_s;
        portal_.respond(other, success, {u"file:///wrong"_s});
        portal_.respond(request, success, {u"file:///right"_s});
    };
    EXPECT_EQ(panel_.runModal(fileOptions()), Chosen({FileURL("/right")}));
}

TEST_F(PortalOpenPanelTest, ignoresResponsesAtTheReplacedPath) {
    portal_.otherRequestPath = u"/org/freedesktop/portal/desktop/request/old/7"_s;
    portal_.onOpened = [this](const FakePortal::Request& request) {
        FakePortal::Request other = request;
        other.path = u"/org/freedesktop/portal/desktop/request/"_s +
                     request.caller.mid(1).replace(u'.', u'_') + u'/' +
                     request.options.value(u"handle_token"_s).toString();
        portal_.respond(other, success, {u"file:///wrong"_s});
        portal_.respond(request, success, {u"file:///right"_s});
    };
    EXPECT_EQ(panel_.runModal(fileOptions()), Chosen({FileURL("/right")}));
}

TEST_F(PortalOpenPanelTest, isNotReentrant) {
    Chosen inner({FileURL("/not-run")});
    portal_.onOpened = [&](const FakePortal::Request& request) {
        inner = panel_.runModal(fileOptions());
        portal_.respond(request, success, {u"file:///a"_s});
    };
    EXPECT_EQ(panel_.runModal(fileOptions()), Chosen({FileURL("/a")}));
    EXPECT_EQ(inner, std::nullopt);
    EXPECT_EQ(portal_.requests().size(), 1U);
    EXPECT_EQ(qtDialogs_.count(), 0);
}

TEST_F(PortalOpenPanelTest, closesThePanelWhenTheProgramQuits) {
    portal_.onOpened = [](const auto&) { QCoreApplication::exit(); };
    // QCoreApplication::exit() requires a running event loop.
    std::optional<Chosen> result;
    QTimer::singleShot(0, QCoreApplication::instance(),
                       [&] { result = panel_.runModal(fileOptions()); });
    QCoreApplication::exec();
    EXPECT_EQ(result, std::optional<Chosen>(Chosen()));
    EXPECT_TRUE(runUntil([&] { return !portal_.closedPaths().empty(); }));
    EXPECT_THAT(portal_.closedPaths(), ElementsAre(portal_.requests().front().path));
    EXPECT_EQ(qtDialogs_.count(), 0);
}

TEST_F(PortalOpenPanelTest, startsInTheMusicFolderThenInTheFolderOfTheLastChoice) {
    const TemporaryFolder home;
    home.makeFolder("Music");
    home.makeFolder("Albums \xFF/One");
    const ScopedVariable homeVariable("HOME", home.url().path());
    const ScopedVariable configVariable("XDG_CONFIG_HOME", home.url().path());
    runAndRespond(success,
                  {QString::fromStdString("file://" + home.url().path() + "/Albums%20%FF/One")});
    runAndRespond(cancelled);
    runAndRespond(cancelled);
    const std::string albums = home.url().path() + "/Albums \xFF";
    EXPECT_THAT(startFolders(), ElementsAre(home.url().path() + "/Music", albums, albums));
}

TEST_F(PortalOpenPanelTest, startsInTheHomeFolderOrRootWithoutAMusicFolder) {
    const TemporaryFolder home;
    home.write("user-dirs.dirs", "XDG_MUSIC_DIR=\"relative\"\n");
    const ScopedVariable configVariable("XDG_CONFIG_HOME", home.url().path());
    {
        const ScopedVariable homeVariable("HOME", home.url().path());
        runAndRespond(cancelled);
    }
    {
        const ScopedVariable homeVariable("HOME", home.url().path() + "/gone");
        runAndRespond(cancelled);
    }
    EXPECT_THAT(startFolders(), ElementsAre(home.url().path(), "/"));
}

TEST_F(PortalOpenPanelTest, leavesNoDescriptorOpen) {
    runAndRespond(cancelled);
    const std::size_t before = ProcessCounts::now().descriptors;
    for (int i = 0; i < 5; ++i) {
        runAndRespond(success, {u"file:///a"_s});
    }
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
}

} // namespace
} // namespace kestrel::test
