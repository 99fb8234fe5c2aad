#include "ApplicationStyle.h"
#include "FFmpegError.h"
#include "KestrelApp.h"
#include "PopUpButton.h"
#include "PseudoTranslator.h"
#include "QtOpenPanel.h"
#include "Scenario.h"
#include "TemporaryFolder.h"
#include "Timeout.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QStyle>
#include <QTimer>
#include <QToolTip>

#include <cstdio>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

namespace kestrel {
namespace {

using Grab = std::function<void()>;

/// One screenshot, and how to set up what it shows.
struct Screenshot {
    const char* name;
    std::function<void(Scenario&)> prepare = [](Scenario&) {};
    /// Opens something over the shown window and calls `grab` while it is open.
    std::function<void(Scenario&, QWidget& window, const Grab& grab)> open =
        [](Scenario&, QWidget&, const Grab& grab) { grab(); };
    bool hasFFmpeg = true;
    bool isRightToLeft = false;
    int fontPercent = 100;
};

QPalette darkPalette() {
    return {Qt::white,
            QColor(0x2C, 0x2C, 0x30),
            QColor(0x50, 0x50, 0x55),
            QColor(0x14, 0x14, 0x16),
            QColor(0x38, 0x38, 0x3C),
            Qt::white,
            Qt::white,
            QColor(0x1E, 0x1E, 0x20),
            QColor(0x24, 0x24, 0x27)};
}

void add(const Scenario& scenario, const std::string& folder,
         std::initializer_list<std::string> names) {
    const std::string path = "/home/ada/Music/" + folder + "/";
    std::vector<FileURL> urls;
    for (const std::string& name : names) {
        urls.emplace_back(path + name);
    }
    scenario.model->add(urls);
}

void choose(const Scenario& scenario, OutputFormat format) {
    ConversionSettings settings = scenario.model->settings();
    settings.format = format;
    scenario.model->setSettings(settings);
}

void addAlbum(const Scenario& scenario) {
    add(scenario, "Evening Songs",
        {"01 Harbour Lights.opus", "02 A Long Way Down.opus", "03 Broken Reel.opus",
         "04 Kingfisher.opus", "05 Salt and Cedar.opus"});
    scenario.chooseDestination("/home/ada/Music/Converted");
}

/// The first of two batches was cancelled.
void showAllStates(Scenario& scenario) {
    addAlbum(scenario);
    const std::string message =
        "[ogg @ 0x5581] Page at 81920 is missing its header\n"
        "/home/ada/Music/Evening Songs/02 A Long Way Down.opus: Invalid data found when "
        "processing input";
    scenario.failWith("02 A Long Way Down.opus", message);
    scenario.failWith("03 Broken Reel.opus", message);
    scenario.cancelAt("04 Kingfisher.opus");
    static_cast<void>(scenario.convertAll());
    scenario.holdBack("03 Broken Reel.opus", 0.62);
    scenario.start();
    static_cast<void>(scenario.waitForProgress(2));
}

void showConverting(Scenario& scenario) {
    addAlbum(scenario);
    scenario.holdBack("03 Broken Reel.opus", 0.62);
    scenario.start();
    static_cast<void>(scenario.waitForProgress(2));
}

void showLongNames(Scenario& scenario) {
    const std::string words = "A title that goes on and on, well beyond what any row can show, ";
    add(scenario, "Symphonies, Sonatas and " + words + words,
        {"01 " + words + words + words + ".opus", std::string(180, 'W') + ".opus",
         "03 caf\xE9 (not UTF-8).opus", "04 \u0645\u0648\u0633\u064A\u0642\u0649.opus",
         "05 \u97F3\u697D\u306E\u6642\u9593.opus", "06 <b>bold & more.opus"});
    scenario.chooseDestination("/home/ada/Music/" + words + words + "/Converted");
}

void showTenThousandJobs(Scenario& scenario) {
    std::vector<FileURL> urls;
    constexpr int count = 10'000;
    urls.reserve(count);
    for (int number = 1; number <= count; ++number) {
        urls.emplace_back("/home/ada/Music/Archive/Recording " + std::to_string(number) + ".opus");
    }
    scenario.model->add(urls);
    scenario.chooseDestination("/home/ada/Music/Converted");
}

void openMenu(Scenario&, QWidget& window, const Grab& grab) {
    QMenu* menu = window.findChild<QMenuBar*>()->actions().front()->menu();
    QTest::keyClick(&window, Qt::Key_F10);
    grab();
    menu->close();
}

void openPopUpList(Scenario&, QWidget& window, const Grab& grab) {
    auto* picker = window.findChild<PopUpButton*>();
    picker->showPopup();
    grab();
    picker->hidePopup();
}

void openToolTip(Scenario&, QWidget& window, const Grab& grab) {
    auto* path = window.findChild<QWidget*>(QStringLiteral("destinationPath"))->parentWidget();
    QToolTip::showText(path->mapToGlobal(QPoint(120, -40)), path->toolTip(), path);
    grab();
    QToolTip::hideText();
}

/// Shows Qt's file dialog, as the program does without a portal, for the last request.
void openPanel(const Scenario& scenario, const Grab& grab) {
    const test::TemporaryFolder folder;
    for (const char* name :
         {"01 Harbour Lights.opus", "02 A Long Way Down.opus", "Interview.oga"}) {
        static_cast<void>(folder.write(name));
    }
    static_cast<void>(folder.makeFolder("Evening Songs"));
    QTimer::singleShot(0, [&grab] {
        grab();
        QApplication::activeModalWidget()->close();
    });
    static_cast<void>(runQtOpenPanel(scenario.panel->shown.back(), folder.url()));
}

void openFilePanel(Scenario& scenario, QWidget&, const Grab& grab) {
    scenario.model->chooseFiles();
    openPanel(scenario, grab);
}

void openFolderPanel(Scenario& scenario, QWidget&, const Grab& grab) {
    scenario.model->chooseFolder();
    openPanel(scenario, grab);
}

void openDestinationPanel(Scenario& scenario, QWidget&, const Grab& grab) {
    scenario.model->chooseDestination();
    openPanel(scenario, grab);
}

std::vector<Screenshot> screenshots() {
    return {
        {.name = "empty"},
        {.name = "hovered", .prepare = [](Scenario& s) { s.model->setIsDropTargeted(true); }},
        {.name = "one-job",
         .prepare = [](Scenario& s) { add(s, "Evening Songs", {"01 Harbour Lights.opus"}); }},
        {.name = "all-states", .prepare = showAllStates},
        {.name = "converting", .prepare = showConverting},
        {.name = "long-names", .prepare = showLongNames},
        {.name = "ten-thousand-jobs", .prepare = showTenThousandJobs},
        {.name = "no-ffmpeg", .prepare = addAlbum, .hasFFmpeg = false},
        {.name = "alert",
         .prepare =
             [](Scenario& s) {
                 addAlbum(s);
                 s.model->setAlertMessage(FFmpegError::notFound().errorDescription());
             },
         .hasFFmpeg = false},
        {.name = "aiff",
         .prepare =
             [](Scenario& s) {
                 addAlbum(s);
                 choose(s, OutputFormat::aiff);
             }},
        {.name = "menu", .prepare = addAlbum, .open = openMenu},
        {.name = "pop-up-list",
         .prepare =
             [](Scenario& s) {
                 addAlbum(s);
                 choose(s, OutputFormat::wav);
             },
         .open = openPopUpList},
        {.name = "tool-tip", .prepare = addAlbum, .open = openToolTip},
        {.name = "file-panel", .prepare = addAlbum, .open = openFilePanel},
        {.name = "folder-panel", .prepare = addAlbum, .open = openFolderPanel},
        {.name = "destination-panel", .prepare = addAlbum, .open = openDestinationPanel},
        {.name = "right-to-left", .prepare = showConverting, .isRightToLeft = true},
        {.name = "large-fonts", .prepare = showConverting, .fontPercent = 200},
    };
}

/// Grabs the window and those of its application that are shown over it.
QPixmap grab(QWidget& window) {
    QPixmap image = window.grab();
    QPainter painter(&image);
    for (QWidget* other : QApplication::topLevelWidgets()) {
        if (other != &window && other->isVisible() &&
            QTest::qWaitForWindowExposed(other, test::timeout)) {
            QRect place(other->pos() - window.pos(), other->size());
            if (qobject_cast<QDialog*>(other) != nullptr) {
                place.moveCenter(window.rect().center());
            }
            painter.drawPixmap(place.topLeft(), other->grab());
        }
    }
    return image;
}

bool take(const Screenshot& screenshot, const QString& path, bool isPseudo) {
    const QFont original = QApplication::font();
    QFont font = original;
    font.setPointSizeF(original.pointSizeF() * screenshot.fontPercent / 100);
    QApplication::setFont(font);
    QApplication::setLayoutDirection(screenshot.isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    bool isSaved = false;
    {
        PseudoTranslator translator(QApplication::layoutDirection());
        if (isPseudo) {
            QCoreApplication::installTranslator(&translator);
        }
        Scenario scenario;
        KestrelApp app(scenario.model, [&screenshot] {
            return screenshot.hasFFmpeg ? std::optional(FileURL("/usr/bin/ffmpeg")) : std::nullopt;
        });
        QWidget& window = app.window();
        window.resize(1060, 700);
        window.show();
        screenshot.prepare(scenario);
        settle();
        isSaved = QTest::qWaitForWindowExposed(&window, test::timeout);
        settle();
        screenshot.open(scenario, window, [&] {
            settle();
            isSaved = isSaved && grab(window).save(path);
        });
    }
    QApplication::setFont(original);
    QApplication::setLayoutDirection(Qt::LeftToRight);
    return isSaved;
}

int run(const QString& folder, bool isPseudo) {
    if (!QDir().mkpath(folder)) {
        static_cast<void>(std::fprintf(stderr, "gallery: cannot make the folder\n"));
        return 1;
    }
    const QPalette light = QApplication::palette();
    for (const auto& [scheme, palette] :
         {std::pair("light", light), std::pair("dark", darkPalette())}) {
        // As a desktop's palette is.
        QPalette polished = palette;
        QApplication::style()->polish(polished);
        QApplication::setPalette(polished);
        for (const Screenshot& screenshot : screenshots()) {
            const QString path =
                QStringLiteral("%1/%2-%3.png")
                    .arg(folder, QString::fromLatin1(screenshot.name), QString::fromLatin1(scheme));
            if (!take(screenshot, path, isPseudo)) {
                static_cast<void>(std::fprintf(stderr, "gallery: cannot make %s\n",
                                               path.toLocal8Bit().constData()));
                return 1;
            }
        }
    }
    return 0;
}

} // namespace
} // namespace kestrel

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    kestrel::ApplicationStyle::install();
    const bool isPseudo = argc == 3 && std::string_view(argv[1]) == "--pseudo";
    if (argc != (isPseudo ? 3 : 2)) {
        static_cast<void>(std::fprintf(stderr, "usage: kestrel_gallery [--pseudo] FOLDER\n"));
        return 2;
    }
    return kestrel::run(QString::fromLocal8Bit(argv[argc - 1]), isPseudo);
}
