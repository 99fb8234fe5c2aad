// Shows a window until its first frame is on the screen, and prints the time of that frame, in
// milliseconds since START, and the RSS in KiB at that time. With `idle`, waits until the program
// has nothing left to do, and prints the CPU time that it has taken, in milliseconds. The window is
// empty, has a single word, has the texts of the program's own window in plain labels, or is the
// program's own.
#include "Clocks.h"
#include "ResidentMemory.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#ifdef HAS_KESTREL
#include "ApplicationStyle.h"
#include "FontConfiguration.h"
#include "KestrelApp.h"
#include "StandardStreams.h"
#include "Translation.h"
#endif

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

/// Reports the first frame of a window once it is on the screen, and ends the program.
class FirstFrame : public QObject {
  public:
    FirstFrame(QWidget& window, long long startNanoseconds, bool waitsUntilIdle)
        : start_(startNanoseconds), waitsUntilIdle_(waitsUntilIdle) {
        window.installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && watched->isWidgetType()) {
            qobject_cast<QWidget*>(watched)->windowHandle()->installEventFilter(this);
        }
        const auto* native = qobject_cast<QWindow*>(watched);
        if (event->type() == QEvent::Expose && native->isExposed() && !isExposed_) {
            isExposed_ = true;
            // The frame is flushed when this event has been handled. Ahead of what the program does
            // after its first frame.
            QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
        }
        return QObject::eventFilter(watched, event);
    }

    bool event(QEvent* event) override {
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        if (waitsUntilIdle_) {
            QTimer::singleShot(1000, this, [] {
                std::printf("%.3f\n", kestrel::bench::processSeconds() * 1000);
                end();
            });
        } else {
            report();
        }
        return true;
    }

  private:
    void report() const {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        const auto elapsed = std::chrono::nanoseconds(now).count() - start_;
        std::printf("%.3f %ld\n", static_cast<double>(elapsed) / 1e6,
                    kestrel::bench::residentKibibytes());
        end();
    }

    /// What the program does from here on is not measured.
    [[noreturn]] static void end() {
        static_cast<void>(std::fflush(nullptr));
        std::_Exit(0);
    }

    long long start_;
    bool waitsUntilIdle_;
    bool isExposed_ = false;
};

#ifdef HAS_TEXTS
/// The texts of the program's window, in the sizes, weights and families that it has them in.
void addTexts(QWidget& window) {
    const auto text = [](int pixels, QFont::Weight weight, const QString& words) {
        auto* label = new QLabel(words);
        QFont font = label->font();
        font.setPixelSize(pixels);
        font.setWeight(weight);
        if (words.endsWith(u'%')) {
            font.setFamilies({QStringLiteral("monospace")});
        }
        label->setFont(font);
        return label;
    };
    auto* column = new QVBoxLayout(&window);
    for (QLabel* label : {
             text(12, QFont::Normal, QStringLiteral("File")),
             text(16, QFont::Bold, QStringLiteral("Kestrel")),
             text(9, QFont::Normal, QStringLiteral("Opus, made universal")),
             text(10, QFont::Bold, QStringLiteral("OUTPUT FORMAT")),
             text(10, QFont::DemiBold, QStringLiteral("MP3")),
             text(10, QFont::Normal, QStringLiteral("AIFF")),
             text(10, QFont::Normal, QStringLiteral("WAV")),
             text(10, QFont::Bold, QStringLiteral("QUALITY")),
             text(9, QFont::DemiBold, QStringLiteral("82%")),
             text(9, QFont::Normal, QStringLiteral("Higher quality creates larger MP3 files.")),
             text(10, QFont::Bold, QStringLiteral("PCM OPTIONS")),
             text(12, QFont::Normal, QStringLiteral("Bit depth")),
             text(12, QFont::Normal, QStringLiteral("24-bit")),
             text(9, QFont::Normal, QStringLiteral("FFmpeg ready")),
             text(16, QFont::Bold, QStringLiteral("Conversion Queue")),
             text(10, QFont::Normal, QStringLiteral("Add OPUS, OGG, or OGA files")),
             text(12, QFont::Normal, QStringLiteral("Folder")),
             text(12, QFont::DemiBold, QStringLiteral("Add Audio")),
             text(14, QFont::Bold, QStringLiteral("Drop Opus audio or folders here")),
             text(10, QFont::Normal,
                  QStringLiteral("Queue a single track or an entire folder tree.")),
             text(12, QFont::Normal, QStringLiteral("Choose Audio")),
             text(12, QFont::Normal, QStringLiteral("Choose Folder")),
             text(9, QFont::Normal, QStringLiteral("Save to")),
             text(12, QFont::Normal, QStringLiteral("Choose destination…")),
             text(12, QFont::DemiBold, QStringLiteral("Convert 0 Files")),
         }) {
        column->addWidget(label);
    }
}
#endif

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 && (argc != 3 || argv[2] != std::string_view("idle"))) {
        static_cast<void>(std::fprintf(stderr, "usage: %s START [idle]\n", argv[0]));
        return 2;
    }
    const long long start = std::strtoll(argv[1], nullptr, 10);
    const bool waitsUntilIdle = argc == 3;
#ifdef HAS_KESTREL
    // As the program's own main() does.
    kestrel::redirectMissingStandardStreams();
    std::jthread fonts = kestrel::readFontConfiguration();
    kestrel::KestrelApp::prepare();
    const QApplication application(argc, argv);
    fonts = {};
    kestrel::ApplicationStyle::install();
    const kestrel::Translation translation;
    kestrel::KestrelApp app;
    FirstFrame frame(app.window(), start, waitsUntilIdle);
    return app.run();
#else
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(960, 640);
#ifdef HAS_WORD
    const QLabel word(QStringLiteral("Word"), &window);
#endif
#ifdef HAS_TEXTS
    addTexts(window);
#endif
    FirstFrame frame(window, start, waitsUntilIdle);
    window.show();
    return QApplication::exec();
#endif
}
