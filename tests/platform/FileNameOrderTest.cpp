#include "FileNameOrder.h"

#include "FolderListing.h"
#include "TemporaryFolder.h"

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

std::vector<FileURL> urlsOf(const Names& paths) {
    std::vector<FileURL> urls;
    for (const std::string& path : paths) {
        urls.emplace_back(path.front() == '/' ? path : "/" + path);
    }
    return urls;
}

/// Returns the names, sorted.
Names sorted(const Names& names) {
    std::vector<FileURL> urls = urlsOf(names);
    sortByFileName(urls);
    Names result;
    std::transform(urls.begin(), urls.end(), std::back_inserter(result),
                   [](const FileURL& url) { return std::string(url.lastPathComponent()); });
    return result;
}

/// Names that the collations of different languages order differently.
const Names localeSensitiveNames = {"ı.opus",  "I.opus", "i.opus", "İ.opus", "h.opus", "j.opus",
                                    "ä.opus",  "z.opus", "a.opus", "ö.opus", "o.opus", "p.opus",
                                    "ç.opus",  "c.opus", "d.opus", "10",     "2",      "_x",
                                    "caf\xE9", "Š",      "s",      "t"};

struct HelperOutput {
    QByteArray locale;
    QList<QByteArray> names;
};

/// Sorts the names in a child process that runs in the locale.
HelperOutput sortedUnderLocale(const QString& locale, const Names& names) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LANGUAGE"));
    environment.insert(QStringLiteral("LC_ALL"), locale);
    environment.insert(QStringLiteral("LANG"), locale);
    environment.insert(QStringLiteral("LOCPATH"), QStringLiteral(KESTREL_TEST_LOCALES));
    QProcess helper;
    helper.setProcessEnvironment(environment);
    helper.start(QStringLiteral(KESTREL_FILE_NAME_ORDER_HELPER), QStringList());
    QByteArray input;
    for (const std::string& name : names) {
        input += QByteArray::fromStdString(name) + '\n';
    }
    helper.write(input);
    helper.closeWriteChannel();
    EXPECT_TRUE(helper.waitForFinished());
    EXPECT_EQ(helper.exitCode(), 0);
    QList<QByteArray> lines = helper.readAllStandardOutput().split('\n');
    lines.removeLast();
    return {lines.isEmpty() ? QByteArray() : lines.takeFirst(), lines};
}

TEST(FileNameOrder, comparesRunsOfDigitsByTheirValue) {
    EXPECT_THAT(sorted({"10.opus", "9.opus", "2.opus", "1.opus"}),
                ElementsAre("1.opus", "2.opus", "9.opus", "10.opus"));
    EXPECT_THAT(sorted({"a100b2", "a20b10", "a20b9", "a3"}),
                ElementsAre("a3", "a20b9", "a20b10", "a100b2"));
    EXPECT_THAT(sorted({"99999999999999999999999", "100000000000000000000000"}),
                ElementsAre("99999999999999999999999", "100000000000000000000000"));
}

TEST(FileNameOrder, ignoresLeadingZeros) {
    EXPECT_THAT(sorted({"003.opus", "0010.opus", "02.opus", "1.opus"}),
                ElementsAre("1.opus", "02.opus", "003.opus", "0010.opus"));
    // Equal, so they keep their order.
    EXPECT_THAT(sorted({"07", "7", "007"}), ElementsAre("07", "7", "007"));
    EXPECT_THAT(sorted({"7", "007", "07"}), ElementsAre("7", "007", "07"));
}

TEST(FileNameOrder, ignoresCase) {
    EXPECT_THAT(sorted({"b.opus", "C.opus", "A.opus"}), ElementsAre("A.opus", "b.opus", "C.opus"));
    EXPECT_THAT(sorted({"TRACK", "track", "Track"}), ElementsAre("TRACK", "track", "Track"));
    EXPECT_THAT(sorted({"track", "Track", "TRACK"}), ElementsAre("track", "Track", "TRACK"));
}

TEST(FileNameOrder, sortsAccentedLettersAfterTheBaseLetter) {
    EXPECT_THAT(sorted({"z", "ä", "b", "a", "Ä"}), ElementsAre("a", "ä", "Ä", "b", "z"));
}

TEST(FileNameOrder, comparesOnlyTheLastComponent) {
    std::vector<FileURL> urls = urlsOf({"/a/z.opus", "/z/a.opus", "/m/m.opus"});
    sortByFileName(urls);
    EXPECT_EQ(urls, urlsOf({"/z/a.opus", "/m/m.opus", "/a/z.opus"}));
}

TEST(FileNameOrder, isStable) {
    std::vector<FileURL> urls = urlsOf({"/c/x", "/d/w", "/a/X", "/b/x", "/a/x"});
    sortByFileName(urls);
    EXPECT_EQ(urls, urlsOf({"/d/w", "/c/x", "/a/X", "/b/x", "/a/x"}));
}

TEST(FileNameOrder, sortsAListedTree) {
    const TemporaryFolder temp;
    for (const char* name : {"b.opus", "A.ogg", ".hidden.opus", "sub/10.opus", "sub/2.oga"}) {
        temp.write(name);
    }
    std::vector<FileURL> urls = listFolder(temp.url());
    sortByFileName(urls);
    EXPECT_EQ(urls,
              (std::vector<FileURL>{temp.file("sub/2.oga"), temp.file("sub/10.opus"),
                                    temp.file("A.ogg"), temp.file("b.opus"), temp.file("sub")}));
}

TEST(FileNameOrder, keepsNamesThatAreNotUtf8) {
    const Names names = {"\xFF\xFE", "b", "caf\xE9", "a", "\x80", "caf\xC3\xA9"};
    Names result = sorted(names);
    EXPECT_TRUE(std::is_permutation(result.begin(), result.end(), names.begin(), names.end()));
    EXPECT_LT(std::find(result.begin(), result.end(), "a"),
              std::find(result.begin(), result.end(), "b"));
}

TEST(FileNameOrder, isAStrictWeakOrder) {
    // Any three names sort as they do within the whole list.
    Names all = sorted(localeSensitiveNames);
    std::erase(all, "I.opus"); // equal to another one
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t j = i + 1; j < all.size(); ++j) {
            for (std::size_t k = j + 1; k < all.size(); ++k) {
                ASSERT_THAT(sorted({all[k], all[j], all[i]}), ElementsAre(all[i], all[j], all[k]));
            }
        }
    }
}

TEST(FileNameOrder, acceptsAnEmptyList) {
    std::vector<FileURL> urls;
    sortByFileName(urls);
    EXPECT_TRUE(urls.empty());
}

class FileNameOrderUnderLocaleTest : public testing::TestWithParam<const char*> {};

TEST_P(FileNameOrderUnderLocaleTest, doesNotDependOnTheLocale) {
    const HelperOutput output =
        sortedUnderLocale(QString::fromLatin1(GetParam()), localeSensitiveNames);
    // The locale was in effect in the child process.
    EXPECT_EQ(output.locale, QByteArray(GetParam()).split('.').first());
    QList<QByteArray> expected;
    for (const std::string& name : sorted(localeSensitiveNames)) {
        expected.append(QByteArray::fromStdString(name));
    }
    EXPECT_EQ(output.names, expected);
}

INSTANTIATE_TEST_SUITE_P(Locales, FileNameOrderUnderLocaleTest,
                         testing::Values("C", "en_US.UTF-8", "tr_TR.UTF-8"));

} // namespace
} // namespace kestrel::test
