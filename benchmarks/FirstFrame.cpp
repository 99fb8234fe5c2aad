// Shows a window, and prints the time of its first frame, in milliseconds since START, and the RSS
// in KiB at that time. The window is empty, has a single word, or is the program's own.
#include "ResidentMemory.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QTimer>
#include <QWidget>

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
#include <thread>

namespace {

/// Reports the first frame of a window once it is on the screen, and ends the program.
class FirstFrame : public QObject {
  public:
    FirstFrame(QWidget& window, long long startNanoseconds) : start_(startNanoseconds) {
        window.installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !isPainted_) {
            isPainted_ = true;
            // The frame is flushed before the next event-loop iteration.
            QMetaObject::invokeMethod(this, &FirstFrame::report, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    void report() const {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        const auto elapsed = std::chrono::nanoseconds(now).count() - start_;
        std::printf("%.3f %ld\n", static_cast<double>(elapsed) / 1e6,
                    kestrel::bench::residentKibibytes());
        QCoreApplication::quit();
    }

    long long start_;
    bool isPainted_ = false;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        static_cast<void>(std::fprintf(stderr, "usage: %s START\n", argv[0]));
        return 2;
    }
    const long long start = std::strtoll(argv[1], nullptr, 10);
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
    FirstFrame frame(app.window(), start);
    return app.run();
#else
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(960, 640);
#ifdef HAS_WORD
    const QLabel word(QStringLiteral("Word"), &window);
#endif
    FirstFrame frame(window, start);
    window.show();
    return QApplication::exec();
#endif
}
