#include "FontConfiguration.h"

#include "RunInChild.h"
#include "TemporaryFolder.h"

#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

#include <sys/resource.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace kestrel::test {
namespace {

bool hasFontFolder(std::string_view path) {
    FcStrList* folders = FcConfigGetFontDirs(nullptr);
    bool isFound = false;
    while (const FcChar8* folder = FcStrListNext(folders)) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): text of fontconfig's
        isFound = isFound || reinterpret_cast<const char*>(folder) == path;
    }
    FcStrListDone(folders);
    return isFound;
}

[[noreturn]] void readAFileThatIsGoneAfterwards() {
    bool isRead = false;
    {
        const TemporaryFolder folder;
        const std::string fonts = folder.makeFolder("fonts").path();
        const FileURL file =
            folder.write("fonts.conf", "<fontconfig><dir>" + fonts + "</dir></fontconfig>");
        ::setenv("FONTCONFIG_FILE", file.path().c_str(), 1);
        readFontConfiguration().join();
        std::filesystem::remove(file.path());
        isRead = hasFontFolder(fonts);
    }
    std::_Exit(isRead ? 0 : 1);
}

[[noreturn]] void lookUpFamiliesWithoutFonts() {
    readFontConfiguration().join();
    FcConfigSetCurrent(FcConfigCreate());
    const auto isKnown = [](const QString& family) {
        return installedFontFamily(family) != family;
    };
    const bool areUsualOnesKnown =
        isKnown(QStringLiteral("Sans Serif")) && isKnown(QStringLiteral("monospace"));
    std::_Exit(areUsualOnesKnown && !isKnown(QStringLiteral("serif")) ? 0 : 1);
}

[[noreturn]] void readWithoutThreads() {
    const rlimit noThread{0, 0};
    if (!dropPrivileges() || ::setrlimit(RLIMIT_NPROC, &noThread) != 0) {
        std::_Exit(2);
    }
    std::_Exit(readFontConfiguration().joinable() ? 1 : 0);
}

TEST(FontConfigurationDeathTest, hasBeenReadOnceItsThreadEnds) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(readAFileThatIsGoneAfterwards(), ::testing::ExitedWithCode(0), "");
}

TEST(FontConfigurationDeathTest, looksUpTheUsualFamiliesOnItsThread) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(lookUpFamiliesWithoutFonts(), ::testing::ExitedWithCode(0), "");
}

TEST(FontConfigurationDeathTest, isLeftToQtWhereNoThreadCanBeStarted) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(readWithoutThreads(), ::testing::ExitedWithCode(0), "");
}

TEST(FontConfigurationTest, findsTheInstalledFamilyForEveryFamily) {
    const QStringList installed = QFontDatabase::families();
    for (const char* family : {"monospace", "Sans Serif", "No Such Family"}) {
        EXPECT_TRUE(installed.contains(installedFontFamily(QString::fromUtf8(family)))) << family;
    }
    EXPECT_TRUE(QFontDatabase::isFixedPitch(installedFontFamily(QStringLiteral("monospace"))));
}

TEST(FontConfigurationTest, keepsAnInstalledFamily) {
    const QString family = installedFontFamily(QStringLiteral("serif"));
    EXPECT_EQ(installedFontFamily(family), family);
}

TEST(FontConfigurationTest, findsTheFamilyThatQtFinds) {
    for (const char* family : {"monospace", "Sans Serif", "serif"}) {
        const QString name = QString::fromUtf8(family);
        EXPECT_EQ(installedFontFamily(name), QFontInfo(QFont(name)).family());
    }
}

} // namespace
} // namespace kestrel::test
