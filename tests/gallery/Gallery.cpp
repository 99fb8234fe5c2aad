#include "Alert.h"
#include "FFmpegError.h"
#include "KestrelApp.h"
#include "PseudoTranslator.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QApplication>
#include <QDir>
#include <QPainter>

#include <cstdio>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

namespace kestrel {
namespace {

/// One screenshot, and how to set up what it shows.
struct Screenshot {
    const char* name;
    std::function<void(Scenario&)> prepare = [](Scenario&) {};
    bool hasFFmpeg = true;
    bool isRightToLeft = false;
    int fontPercent = 100;
};

QPalette darkPalette() {
    QPalette palette(Qt::white, QColor(0x2C, 0x2C, 0x30), QColor(0x50, 0x50, 0x55),
                     QColor(0x14, 0x14, 0x16), QColor(0x38, 0x38, 0x3C), Qt::white, Qt::white,
                     QColor(0x1E, 0x1E, 0x20), QColor(0x24, 0x24, 0x27));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x65, 0xCA));
    return palette;
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
        {.name = "right-to-left", .prepare = showConverting, .isRightToLeft = true},
        {.name = "large-fonts", .prepare = showConverting, .fontPercent = 200},
    };
}

/// Grabs the window, and the alert over it if there is one.
QPixmap grab(QWidget& window) {
    QPixmap image = window.grab();
    auto* alert = window.findChild<Alert*>();
    if (alert != nullptr && QTest::qWaitForWindowExposed(alert, test::timeout)) {
        QRect place = alert->rect();
        place.moveCenter(window.rect().center());
        QPainter painter(&image);
        painter.drawPixmap(place.topLeft(), alert->grab());
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
        isSaved = isSaved && grab(window).save(path);
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
        QApplication::setPalette(palette);
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
    const bool isPseudo = argc == 3 && std::string_view(argv[1]) == "--pseudo";
    if (argc != (isPseudo ? 3 : 2)) {
        static_cast<void>(std::fprintf(stderr, "usage: kestrel_gallery [--pseudo] FOLDER\n"));
        return 2;
    }
    return kestrel::run(QString::fromLocal8Bit(argv[argc - 1]), isPseudo);
}
