#include "KestrelApp.h"

#include "ApplicationStyle.h"
#include "BusConnection.h"
#include "ContentView.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "ThemeColor.h"
#include "Timeout.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QTimer>
#include <QToolTip>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

class KestrelAppTest : public ::testing::Test {
  protected:
    KestrelAppTest() : app_(scenario_.model) { EXPECT_TRUE(showActive(app_.window())); }

    QMenu* fileMenu() { return app_.window().findChild<QMenuBar*>()->actions().front()->menu(); }

    void press(Qt::KeyboardModifiers modifiers, Qt::Key key) {
        QTest::keyClick(&app_.window(), key, modifiers);
        settle();
    }

    void expectBothShortcutsToWork() {
        scenario_.panel->shown.clear();
        press(Qt::ControlModifier, Qt::Key_O);
        EXPECT_THAT(scenario_.panelTitles(), ElementsAre("Choose Opus audio to convert"));
        scenario_.panel->shown.clear();
        press(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_O);
        EXPECT_THAT(scenario_.panelTitles(), ElementsAre("Choose a folder of Opus audio"));
    }

    Scenario scenario_;
    KestrelApp app_;
};

TEST_F(KestrelAppTest, addsFromTheKeyboardToAnEmptyQueue) {
    expectBothShortcutsToWork();
}

TEST_F(KestrelAppTest, addsFromTheKeyboardWhileABatchRuns) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.model->isConverting());
    expectBothShortcutsToWork();
    for (const QAction* action : fileMenu()->actions()) {
        EXPECT_TRUE(action->isEnabled());
    }
}

TEST_F(KestrelAppTest, addsNothingFromTheKeyboardWhileTheAlertIsOpen) {
    scenario_.model->setAlertMessage("Something");
    ASSERT_TRUE(test::runUntil([] { return QApplication::activeModalWidget() != nullptr; }));
    press(Qt::ControlModifier, Qt::Key_O);
    press(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_O);
    EXPECT_THAT(scenario_.panelTitles(), ElementsAre());
    scenario_.model->setAlertMessage(std::nullopt);
    ASSERT_TRUE(test::runUntil([] { return QApplication::activeModalWidget() == nullptr; }));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&app_.window(), test::timeout));
    expectBothShortcutsToWork();
}

TEST_F(KestrelAppTest, addsNothingFromTheMenuBehindTheAlert) {
    scenario_.model->setAlertMessage("Something");
    ASSERT_TRUE(test::runUntil([] { return QApplication::activeModalWidget() != nullptr; }));
    // As an AT-SPI client does, which no modal dialog keeps from the menu.
    fileMenu()->actions()[0]->trigger();
    fileMenu()->actions()[1]->trigger();
    settle();
    EXPECT_THAT(scenario_.panelTitles(), ElementsAre());
    EXPECT_EQ(scenario_.model->alertMessage(), "Something");
}

TEST_F(KestrelAppTest, addsFromTheMenu) {
    fileMenu()->actions()[0]->trigger();
    // The AT-SPI client gets its reply before the panel opens.
    EXPECT_THAT(scenario_.panelTitles(), ElementsAre());
    settle();
    EXPECT_THAT(scenario_.panelTitles(), ElementsAre("Choose Opus audio to convert"));
    fileMenu()->actions()[1]->trigger();
    settle();
    EXPECT_THAT(scenario_.panelTitles(),
                ElementsAre("Choose Opus audio to convert", "Choose a folder of Opus audio"));
}

TEST_F(KestrelAppTest, hasOneMenuThatOpensNoWindow) {
    const auto* bar = app_.window().findChild<QMenuBar*>();
    ASSERT_EQ(bar->actions().size(), 1);
    EXPECT_EQ(utf8(bar->actions().front()->text()), "&File");
    std::vector<std::string> texts;
    for (const QAction* action : fileMenu()->actions()) {
        texts.push_back(action->isSeparator() ? "-" : utf8(action->text()));
    }
    EXPECT_THAT(texts, ElementsAre("Add Audio…", "Add Folder…", "-", "Quit"));
}

TEST_F(KestrelAppTest, opensNoSecondWindow) {
    press(Qt::ControlModifier, Qt::Key_N);
    int windows = 0;
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        windows += widget->isVisible() ? 1 : 0;
    }
    EXPECT_EQ(windows, 1);
}

TEST_F(KestrelAppTest, growsButDoesNotShrinkBelowItsMinimum) {
    EXPECT_EQ(app_.window().minimumSize(), QSize(960, 640));
    app_.window().resize(100, 100);
    EXPECT_EQ(app_.window().size(), QSize(960, 640));
    const auto* contents = app_.window().findChild<ContentView*>();
    EXPECT_LE(contents->minimumSizeHint().width(), 960);
    EXPECT_LE(contents->minimumSizeHint().height(), 640);
    EXPECT_EQ(app_.window().maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

TEST_F(KestrelAppTest, isTitledKestrel) {
    EXPECT_EQ(utf8(app_.window().windowTitle()), "Kestrel");
}

TEST(KestrelAppPrepareTest, namesTheProgramAndItsDesktopEntry) {
    const QString name = QCoreApplication::applicationName();
    const QString entry = QGuiApplication::desktopFileName();
    const bool hasNoNativeMenuBar = QCoreApplication::testAttribute(Qt::AA_DontUseNativeMenuBar);
    KestrelApp::prepare();
    EXPECT_EQ(utf8(QCoreApplication::applicationName()), "Kestrel");
    EXPECT_EQ(utf8(QGuiApplication::desktopFileName()), "org.kestrel.Converter");
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_DontUseNativeMenuBar));
    QCoreApplication::setApplicationName(name);
    QGuiApplication::setDesktopFileName(entry);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar, hasNoNativeMenuBar);
}

TEST(ApplicationStyleTest, isInstalledOnTopOfTheDesktopsStyle) {
    const QString desktops = QApplication::style()->name();
    ApplicationStyle::install();
    const auto* style = qobject_cast<ApplicationStyle*>(QApplication::style());
    ASSERT_NE(style, nullptr);
    EXPECT_EQ(utf8(style->baseStyle()->name()), utf8(desktops));
    EXPECT_NE(utf8(style->baseStyle()->name()), "windows");
    QApplication::setStyle(desktops);
}

class InstalledStyleTest : public ::testing::Test {
  public:
    InstalledStyleTest(const InstalledStyleTest&) = delete;
    InstalledStyleTest& operator=(const InstalledStyleTest&) = delete;

  protected:
    InstalledStyleTest() { ApplicationStyle::install(); }

    ~InstalledStyleTest() override {
        QApplication::setStyle(desktops_);
        QToolTip::setPalette(toolTips_);
    }

    /// Returns the palette of a tool tip that is shown now.
    static QPalette paletteOfAToolTip() {
        QToolTip::showText(QPoint(10, 10), QStringLiteral("text"));
        QPalette palette = toolTip() != nullptr ? toolTip()->palette() : QPalette();
        QToolTip::hideText();
        // It hides later, and is reused until then.
        EXPECT_TRUE(test::runUntil([] { return toolTip() == nullptr; }));
        return palette;
    }

    static const QWidget* toolTip() {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
            return window->inherits("QTipLabel");
        });
        return found != windows.end() ? *found : nullptr;
    }

  private:
    const QString desktops_ = QApplication::style()->name();
    const QPalette toolTips_ = QToolTip::palette();
};

TEST_F(InstalledStyleTest, highlightsMenusAndListsInTheProgramsColor) {
    const QPalette palette = QApplication::palette("QMenu");
    const QColor purple = ThemeColor(ThemeColor::Name::purple).color(palette);
    EXPECT_EQ(palette.color(QPalette::Highlight).name(), purple.name());
    EXPECT_EQ(palette.color(QPalette::HighlightedText), QColor(Qt::white));
}

TEST_F(InstalledStyleTest, givesToolTipsTheColorsOfTextFields) {
    const QPalette fields = QApplication::palette();
    const QPalette toolTip = paletteOfAToolTip();
    EXPECT_EQ(toolTip.color(QPalette::ToolTipBase).name(), fields.color(QPalette::Base).name());
    EXPECT_EQ(toolTip.color(QPalette::ToolTipText).name(), fields.color(QPalette::Text).name());
}

TEST_F(InstalledStyleTest, keepsTheDesktopsColorsOfToolTips) {
    QPalette desktops = QToolTip::palette();
    desktops.setColor(QPalette::ToolTipBase, Qt::darkBlue);
    desktops.setColor(QPalette::ToolTipText, Qt::cyan);
    QToolTip::setPalette(desktops);
    const QPalette toolTip = paletteOfAToolTip();
    EXPECT_EQ(toolTip.color(QPalette::ToolTipBase), QColor(Qt::darkBlue));
    EXPECT_EQ(toolTip.color(QPalette::ToolTipText), QColor(Qt::cyan));
}

TEST(ApplicationStyleTest, lacksNoIconButThatOfTheMenuBarsExtension) {
    const ApplicationStyle style;
    const auto hasIcon = [&style](QStyle::StandardPixmap icon) {
        return !style.standardIcon(icon, nullptr, nullptr).isNull();
    };
    EXPECT_FALSE(hasIcon(QStyle::SP_ToolBarHorizontalExtensionButton));
    EXPECT_TRUE(hasIcon(QStyle::SP_ToolBarVerticalExtensionButton));
    EXPECT_TRUE(hasIcon(QStyle::SP_MessageBoxWarning));
}

/// Runs the application in this process until `quit`, and exits with its status; with `hasBatch`, a
/// conversion blocks for ever meanwhile.
[[noreturn]] void runAndQuit(bool hasBatch, const std::function<void(KestrelApp&)>& quit) {
    auto* scenario = new Scenario;
    auto* app = new KestrelApp(scenario->model);
    if (hasBatch) {
        scenario->holdBack("a.opus", 0.5);
        scenario->add({"a.opus", "b.opus"});
        scenario->start();
        if (!scenario->model->isConverting()) {
            std::_Exit(99);
        }
    }
    QTimer::singleShot(0, &app->window(), [app, &quit] {
        if (QTest::qWaitForWindowActive(&app->window(), test::timeout)) {
            quit(*app);
        }
    });
    const int status = app->run();
    if (hasBatch) {
        std::_Exit(98);
    }
    delete app;
    delete scenario;
    std::exit(status); // NOLINT(concurrency-mt-unsafe): there is one thread
}

class KestrelAppDeathTest : public ::testing::Test {
  protected:
    KestrelAppDeathTest() { ::testing::GTEST_FLAG(death_test_style) = "threadsafe"; }

    static void expectQuickQuit(bool hasBatch, const std::function<void(KestrelApp&)>& quit) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EXIT(runAndQuit(hasBatch, quit), ::testing::ExitedWithCode(0), "");
        // Generous for a process start; a joined worker would never end.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    }
};

void closeWindow(KestrelApp& app) {
    app.window().close();
}

void pressQuit(KestrelApp& app) {
    QTest::keyClick(&app.window(), Qt::Key_Q, Qt::ControlModifier);
}

/// Runs the application until its window is closed, and exits with 0 if the model then outlives
/// everything that uses it.
[[noreturn]] void closeAndDestroy() {
    auto* scenario = new Scenario;
    const std::weak_ptr<ConverterViewModel> model = scenario->model;
    auto* app = new KestrelApp(scenario->model);
    scenario->add({"a.opus", "b.opus"});
    QTimer::singleShot(0, &app->window(), [app] { app->window().close(); });
    const int status = app->run();
    delete app;
    delete scenario;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is one thread
    std::exit(model.expired() || model.lock()->jobs().size() != 2 ? 97 : status);
}

/// Runs the application until the session bus knows its name, and exits with 0.
[[noreturn]] void runUntilNamed(const QString& name) {
    QGuiApplication::setDesktopFileName(name);
    const Scenario scenario;
    KestrelApp app(scenario.model);
    BusConnection bus(BusConnection::Bus::session);
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        bus.call(
            {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
             "NameHasOwner"},
            [&](sd_bus_message* call) {
                return sd_bus_message_append(call, "s", name.toUtf8().constData());
            },
            [](sd_bus_message* reply) {
                int isOwned = 0;
                if (reply != nullptr && sd_bus_message_read(reply, "b", &isOwned) > 0 &&
                    isOwned != 0) {
                    QCoreApplication::quit();
                }
            });
    });
    poll.start(10);
    QTimer::singleShot(test::timeout, [] { std::_Exit(97); });
    std::exit(app.run()); // NOLINT(concurrency-mt-unsafe): there is one thread
}

TEST_F(KestrelAppDeathTest, ownsTheNameOfItsDesktopFileOnTheSessionBus) {
    EXPECT_EXIT(runUntilNamed(QStringLiteral("org.kestrel.Test")), ::testing::ExitedWithCode(0),
                "");
}

TEST_F(KestrelAppDeathTest, quitsWhenTheWindowIsClosed) {
    expectQuickQuit(false, closeWindow);
}

TEST_F(KestrelAppDeathTest, quitsFromTheKeyboard) {
    expectQuickQuit(false, pressQuit);
}

TEST_F(KestrelAppDeathTest, leavesTheMemoryOfTheQueueToTheKernel) {
    EXPECT_EXIT(closeAndDestroy(), ::testing::ExitedWithCode(0), "");
}

TEST_F(KestrelAppDeathTest, quitsWhileABatchRunsWhenTheWindowIsClosed) {
    expectQuickQuit(true, closeWindow);
}

TEST_F(KestrelAppDeathTest, quitsWhileABatchRunsFromTheKeyboard) {
    expectQuickQuit(true, pressQuit);
}

} // namespace
} // namespace kestrel
