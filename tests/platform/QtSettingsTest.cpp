#include "QtOpenPanel.h"

#include "DialogCatcher.h"
#include "FileDialogDriver.h"
#include "ScopedVariable.h"
#include "TemporaryFolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QSettings>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;

/// Everything below a folder, hidden or not, with its modification time.
std::vector<std::pair<std::string, std::filesystem::file_time_type>>
stateOf(const std::string& folder) {
    std::vector<std::pair<std::string, std::filesystem::file_time_type>> state;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        state.emplace_back(entry.path().string(), entry.last_write_time());
    }
    std::sort(state.begin(), state.end());
    return state;
}

TEST(QtSettings, leaveTheHomeFolderUnchanged) {
    const TemporaryFolder music;
    music.write("Two/2.opus");
    const TemporaryFolder home;
    home.makeFolder(".config/inside");
    const ScopedVariable homeVariable("HOME", home.url().path());
    const ScopedVariable configVariable("XDG_CONFIG_HOME", home.url().path() + "/.config");
    const ScopedVariable dataVariable("XDG_DATA_HOME", home.url().path() + "/.local/share");
    const auto before = stateOf(home.url().path());
    const DialogCatcher catcher([](QFileDialog& dialog) {
        FileDialogDriver(dialog).doubleClick(u"Two"_s);
        FileDialogDriver(dialog).click(u"2.opus"_s);
        FileDialogDriver(dialog).confirm();
    });
    EXPECT_TRUE(runQtOpenPanel({.allowsMultipleSelection = true}, music.url()));
    QCoreApplication::processEvents();
    EXPECT_EQ(stateOf(home.url().path()), before);
    // Nor any other: the first QSettings of a process fixes the folder of all.
    EXPECT_FALSE(QFile::exists(QSettings(QSettings::UserScope, u"QtProject"_s).fileName()));
}

} // namespace
} // namespace kestrel::test
