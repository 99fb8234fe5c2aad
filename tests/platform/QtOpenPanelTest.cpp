#include "QtOpenPanel.h"

#include "DesktopOpenPanel.h"
#include "DialogCatcher.h"
#include "FileDialogDriver.h"
#include "FileDialogSteps.h"
#include "FolderListing.h"
#include "PrivateBus.h"
#include "ProcessCounts.h"
#include "RunUntil.h"
#include "ScopedVariable.h"
#include "SlowWindowManager.h"
#include "TemporaryFolder.h"
#include "Timeout.h"

#include <QAbstractItemView>
#include <QAction>
#include <QLibraryInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <gmock/gmock.h>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using namespace Qt::StringLiterals;
using testing::UnorderedElementsAreArray;
using Chosen = std::optional<std::vector<FileURL>>;
using Driver = FileDialogDriver;

OpenPanel::Options fileOptions() {
    return {.title = "Choose Opus audio to convert",
            .prompt = "Add Audio",
            .allowsMultipleSelection = true,
            .allowedExtensions = {"opus", "ogg", "oga"}};
}

OpenPanel::Options foldersOptions() {
    return {.title = "Choose a folder of Opus audio",
            .prompt = "Add Folder",
            .canChooseFiles = false,
            .canChooseDirectories = true,
            .allowsMultipleSelection = true};
}

OpenPanel::Options destinationOptions() {
    return {.title = "Choose output folder",
            .prompt = "Choose",
            .canChooseFiles = false,
            .canChooseDirectories = true,
            .canCreateDirectories = true};
}

/// Runs the panel, calls `use` with its dialog, and returns its result.
Chosen run(const OpenPanel::Options& options, const FileURL& folder,
           const std::function<void(QFileDialog&)>& use) {
    const DialogCatcher catcher(use);
    Chosen chosen = runQtOpenPanel(options, folder);
    EXPECT_EQ(catcher.count(), 1);
    return chosen;
}

class QtOpenPanelTest : public testing::Test {
  protected:
    QtOpenPanelTest() {
        for (const char* name : {"a.opus", "b.ogg", "X.OGA", "notes.txt", "One/1.opus",
                                 "Two/2.opus", "Three/3.opus"}) {
            music_.write(name);
        }
    }

    TemporaryFolder music_;
};

/// The steps in a panel and its result: paths relative to the folder that it shows, "" for that
/// folder.
struct Use {
    const char* name;
    OpenPanel::Options options;
    std::vector<FileDialogStep> steps;
    std::optional<std::vector<std::string>> chosen;

    friend std::ostream& operator<<(std::ostream& out, const Use& row) { return out << row.name; }
};

class UseOfQtOpenPanelTest : public QtOpenPanelTest, public testing::WithParamInterface<Use> {};

TEST_P(UseOfQtOpenPanelTest, returnsWhatIsPicked) {
    const Chosen chosen = run(GetParam().options, music_.url(), [](QFileDialog& dialog) {
        for (const FileDialogStep& step : GetParam().steps) {
            step(Driver(dialog));
        }
    });
    ASSERT_EQ(chosen.has_value(), GetParam().chosen.has_value());
    std::vector<FileURL> expected;
    for (const std::string& name : GetParam().chosen.value_or(std::vector<std::string>())) {
        expected.push_back(name.empty() ? music_.url() : music_.file(name));
    }
    EXPECT_THAT(chosen.value_or(expected), UnorderedElementsAreArray(expected));
}

std::vector<Use> uses() {
    return {
        {"oneFile", fileOptions(), {click("b.ogg"), confirm()}, {{"b.ogg"}}},
        {"severalFiles",
         fileOptions(),
         {click("X.OGA"), click("a.opus", Qt::ControlModifier), confirm()},
         {{"X.OGA", "a.opus"}}},
        {"aFileInAnOpenedFolder",
         fileOptions(),
         {doubleClick("Two"), click("2.opus"), press(Qt::Key_Return)},
         {{"Two/2.opus"}}},
        {"severalFoldersWithTheMouse",
         foldersOptions(),
         {click("One"), click("Two", Qt::ControlModifier), confirm()},
         {{"One", "Two"}}},
        {"severalFoldersWithTheKeyboard",
         foldersOptions(),
         {click("One"), press(Qt::Key_Down, Qt::ShiftModifier),
          press(Qt::Key_Down, Qt::ShiftModifier), confirmByKeyboard()},
         {{"One", "Three", "Two"}}},
        {"oneFolderInSingleSelection",
         destinationOptions(),
         {click("One"), click("Two", Qt::ControlModifier), confirm()},
         {{"Two"}}},
        {"theShownFolderIfNoneIsSelected",
         destinationOptions(),
         {awaitNames(3), confirm()},
         {{""}}},
        {"nothingByEscape", fileOptions(), {click("a.opus"), press(Qt::Key_Escape)}, {}},
        {"nothingByClosing", foldersOptions(), {close()}, {}},
    };
}

INSTANTIATE_TEST_SUITE_P(Uses, UseOfQtOpenPanelTest, testing::ValuesIn(uses()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(QtOpenPanelTest, showsFoldersAndAllowedFilesCaseInsensitively) {
    run(fileOptions(), music_.url(), [](QFileDialog& dialog) {
        EXPECT_EQ(Driver(dialog).names(6), QStringList({u"One"_s, u"Three"_s, u"Two"_s, u"X.OGA"_s,
                                                        u"a.opus"_s, u"b.ogg"_s}));
        dialog.reject();
    });
}

TEST_F(QtOpenPanelTest, showsOnlyFoldersToChooseFolders) {
    run(foldersOptions(), music_.url(), [](QFileDialog& dialog) {
        EXPECT_EQ(Driver(dialog).names(3), QStringList({u"One"_s, u"Three"_s, u"Two"_s}));
        dialog.reject();
    });
}

TEST_F(QtOpenPanelTest, showsTheGivenTexts) {
    OpenPanel::Options options = fileOptions();
    options.prompt = "Add & Audio";
    run(options, music_.url(), [](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Choose Opus audio to convert"_s);
        Driver(dialog).click(u"a.opus"_s);
        EXPECT_EQ(Driver(dialog).confirmButton()->text(), u"Add && Audio"_s);
        dialog.reject();
    });
    run(foldersOptions(), music_.url(), [](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Choose a folder of Opus audio"_s);
        Driver(dialog).click(u"One"_s);
        EXPECT_EQ(Driver(dialog).confirmButton()->text(), u"Add Folder"_s);
        dialog.reject();
    });
}

TEST_F(QtOpenPanelTest, offersNewFoldersOnlyIfAllowed) {
    for (const OpenPanel::Options& options : {fileOptions(), foldersOptions()}) {
        run(options, music_.url(), [](QFileDialog& dialog) {
            EXPECT_FALSE(Driver(dialog).newFolderButton()->isVisible());
            EXPECT_TRUE(dialog.testOption(QFileDialog::ReadOnly));
            dialog.reject();
        });
    }
    run(destinationOptions(), music_.url(), [](QFileDialog& dialog) {
        EXPECT_TRUE(Driver(dialog).newFolderButton()->isVisible());
        EXPECT_TRUE(Driver(dialog).newFolderButton()->isEnabled());
        dialog.reject();
    });
}

TEST_F(QtOpenPanelTest, createsAndPicksANewFolder) {
    const Chosen chosen = run(destinationOptions(), music_.url(), [](QFileDialog& dialog) {
        const Driver driver(dialog);
        driver.names(3);
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog, timeout));
        QTest::mouseClick(driver.newFolderButton(), Qt::LeftButton);
        driver.names(4);
        QWidget* editor = nullptr;
        ASSERT_TRUE(runUntil([&] {
            editor = QApplication::focusWidget();
            return editor != nullptr && editor->inherits("QLineEdit") &&
                   driver.view()->isAncestorOf(editor);
        }));
        QTest::keyClicks(editor, u"Fresh"_s);
        QTest::keyClick(editor, Qt::Key_Return);
        driver.click(u"Fresh"_s);
        driver.confirm();
    });
    EXPECT_EQ(chosen, Chosen({music_.file("Fresh")}));
    EXPECT_TRUE(std::filesystem::is_directory(music_.url().path() + "/Fresh"));
}

TEST_F(QtOpenPanelTest, deletesNothing) {
    int questions = 0;
    QTimer poller;
    QObject::connect(&poller, &QTimer::timeout, &poller, [&] {
        if (auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            ++questions;
            question->reject();
        }
    });
    poller.start(1);
    for (const OpenPanel::Options& options : {fileOptions(), destinationOptions()}) {
        run(options, music_.url(), [](QFileDialog& dialog) {
            const Driver driver(dialog);
            driver.click(u"One"_s);
            EXPECT_FALSE(dialog.findChild<QAction*>(u"qt_delete_action"_s)->isVisible());
            driver.tabTo(driver.view());
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Delete); // the window matches shortcuts
            QCoreApplication::processEvents();
            dialog.reject();
        });
    }
    EXPECT_EQ(questions, 0);
    EXPECT_EQ(listFolder(music_.url()).size(), 10U);
}

TEST_F(QtOpenPanelTest, returnsNamesWithSpecialCharacters) {
    const FileURL file = music_.write("#1 50% \"caf\xC3\xA9\"; a?b.opus");
    const QString name = QString::fromStdString(std::string(file.lastPathComponent()));
    const Chosen chosen = run(fileOptions(), music_.url(), [&](QFileDialog& dialog) {
        Driver(dialog).click(name);
        Driver(dialog).confirm();
    });
    EXPECT_EQ(chosen, Chosen({file}));
}

TEST_F(QtOpenPanelTest, skipsNamesThatAreNotUtf8) {
    music_.makeFolder("caf\xE9");
    music_.makeFolder("\xFF");
    // Qt 6.8 stops listing a folder at the first such name, in directory order. Qt 6.4 and 6.11
    // continue.
    const bool isListedCompletely = QLibraryInfo::version().minorVersion() != 8;
    const Chosen chosen = run(foldersOptions(), music_.url(), [&](QFileDialog& dialog) {
        const Driver driver(dialog);
        if (isListedCompletely) {
            EXPECT_EQ(driver.names(3), QStringList({u"One"_s, u"Three"_s, u"Two"_s}));
        }
        driver.pressKey(Qt::Key_A, Qt::ControlModifier);
        driver.confirm();
    });
    ASSERT_TRUE(chosen);
    const std::vector<FileURL> valid{music_.file("One"), music_.file("Three"), music_.file("Two")};
    if (isListedCompletely) {
        EXPECT_THAT(*chosen, UnorderedElementsAreArray(valid));
    } else if (*chosen != std::vector{music_.url()}) { // the folder itself, with nothing selected
        EXPECT_THAT(*chosen, testing::IsSubsetOf(valid));
    }
}

TEST_F(QtOpenPanelTest, startsInTheNearestFolderThatItCanShow) {
    const auto startFolder = [](const FileURL& folder) {
        QString shown;
        run(fileOptions(), folder, [&](QFileDialog& dialog) {
            shown = dialog.directory().absolutePath();
            dialog.reject();
        });
        return shown.toStdString();
    };
    music_.makeFolder("caf\xE9/inside");
    EXPECT_EQ(startFolder(music_.file("One")), music_.url().path() + "/One");
    EXPECT_EQ(startFolder(music_.file("caf\xE9/inside")), music_.url().path());
    EXPECT_EQ(startFolder(music_.file("gone/altogether")), music_.url().path());
    EXPECT_EQ(startFolder(FileURL("/")), "/");
}

TEST_F(QtOpenPanelTest, blocksInputToOtherWindows) {
    QMainWindow window;
    auto* button = new QPushButton(&window);
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, button, [&] { ++clicks; });
    window.setCentralWidget(button);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, timeout));
    const QPoint middle = button->rect().center();
    run(fileOptions(), music_.url(), [&](QFileDialog& dialog) {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, middle);
        QCoreApplication::processEvents();
        dialog.reject();
    });
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, middle);
    EXPECT_EQ(clicks, 1);
}

TEST_F(QtOpenPanelTest, givesTheFocusBackUnderASlowWindowManager) {
    QMainWindow window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, timeout));
    {
        const SlowWindowManager slow;
        run(fileOptions(), music_.url(), [&slow](QFileDialog& dialog) {
            slow.bringBackRequestFor(dialog);
            EXPECT_TRUE(runUntil([&dialog] { return dialog.isActiveWindow(); }));
            dialog.reject();
        });
    }
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window, timeout));
}

TEST_F(QtOpenPanelTest, isDestroyedWithItsParentWindow) {
    auto window = std::make_unique<QMainWindow>();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get(), timeout));
    const Chosen chosen = run(fileOptions(), music_.url(), [&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), window.get());
        window.reset();
    });
    EXPECT_EQ(chosen, std::nullopt);
}

TEST_F(QtOpenPanelTest, leavesNoDescriptorOpen) {
    const auto pick = [this] {
        run(fileOptions(), music_.url(), [](QFileDialog& dialog) {
            Driver(dialog).click(u"a.opus"_s);
            Driver(dialog).confirm();
        });
    };
    // Qt opens some descriptors at first use and keeps them: for its icon and type caches and its
    // painting threads. A leak would add one per panel.
    constexpr int maximumPicks = 20;
    constexpr int enough = 3;
    int picksWithoutGrowth = 0;
    for (int i = 0; i < maximumPicks && picksWithoutGrowth < enough; ++i) {
        const std::size_t before = ProcessCounts::now().descriptors;
        pick();
        const bool isGrown = ProcessCounts::now().descriptors > before;
        picksWithoutGrowth = isGrown ? 0 : picksWithoutGrowth + 1;
    }
    EXPECT_EQ(picksWithoutGrowth, enough);
}

TEST_F(QtOpenPanelTest, reopensInTheFolderOfTheLastChoice) {
    DesktopOpenPanel panel(&disconnectedBus);
    const ScopedVariable homeVariable("HOME", music_.url().path());
    const ScopedVariable configVariable("XDG_CONFIG_HOME", music_.url().path());
    QStringList folders;
    const DialogCatcher catcher([&](QFileDialog& dialog) {
        folders.append(dialog.directory().absolutePath());
        if (folders.size() == 1) {
            Driver(dialog).doubleClick(u"Two"_s);
            Driver(dialog).click(u"2.opus"_s);
            Driver(dialog).confirm();
        } else {
            dialog.reject();
        }
    });
    EXPECT_EQ(panel.runModal(fileOptions()), Chosen({music_.file("Two/2.opus")}));
    EXPECT_EQ(panel.runModal(fileOptions()), std::nullopt);
    const QString home = QString::fromStdString(music_.url().path());
    EXPECT_EQ(folders, QStringList({home, home + u"/Two"_s}));
}

TEST_F(QtOpenPanelTest, isNotReentrant) {
    DesktopOpenPanel panel(&disconnectedBus);
    Chosen inner({music_.url()});
    const DialogCatcher catcher([&](QFileDialog& dialog) {
        inner = panel.runModal(fileOptions());
        dialog.reject();
    });
    EXPECT_EQ(panel.runModal(fileOptions()), std::nullopt);
    EXPECT_EQ(inner, std::nullopt);
    EXPECT_EQ(catcher.count(), 1);
}

} // namespace
} // namespace kestrel::test
