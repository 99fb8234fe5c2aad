// Drives the real window with a very large queue as a user would, and prints what each step took
// as one line of JSON: figures in milliseconds unless named otherwise. Or runs a whole batch
// without a window, for the cost of a conversion in a long queue.
#include "ApplicationStyle.h"
#include "Button.h"
#include "Clocks.h"
#include "FirstFrame.h"
#include "FrameWatch.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "KestrelApp.h"
#include "LatencyProbe.h"
#include "ResidentMemory.h"
#include "ScriptedDesktop.h"
#include "StepwiseRunner.h"

#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel::bench {
namespace {

constexpr double msPerSecond = 1000;

std::vector<FileURL> looseFiles(std::size_t count) {
    std::vector<FileURL> urls;
    urls.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        urls.emplace_back("/no-such-folder/Artist/Album " + std::to_string(number / 50) +
                          "/Track " + std::to_string(number) + ".opus");
    }
    return urls;
}

std::shared_ptr<ConverterViewModel> makeModel(const std::shared_ptr<ConversionRunner>& runner) {
    auto panel = std::make_unique<test::ScriptedOpenPanel>();
    panel->answer = {FileURL("/no-such-folder/Converted")};
    return std::make_shared<ConverterViewModel>(ConverterViewModel::Dependencies{
        runner, [] { return FileURL("/usr/bin/ffmpeg"); }, std::move(panel),
        std::make_unique<test::ScriptedFileViewer>()});
}

/// Runs the event loop until `isDone` returns true. A timer wakes it up, since a conversion that
/// blocks makes no event.
void waitUntil(const std::function<bool()>& isDone) {
    QTimer wakeUp;
    wakeUp.start(std::chrono::milliseconds(1));
    while (!isDone()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// A user of the window with a queue of `urls`.
class User {
  public:
    explicit User(std::vector<FileURL> urls) : urls_(std::move(urls)) {}

    /// Runs the application, does everything in turn, prints the figures, and quits. Returns the
    /// exit status.
    int run() {
        new FirstFrame(app_.window(), [this] {
            FrameWatch::settle();
            add();
            scroll();
            batch();
            remove("middle_removed_idle", bar().maximum() / 2);
            remove("last_removed_idle", bar().maximum());
            quit();
        });
        return app_.run();
    }

  private:
    JobScrollArea& list() { return *app_.window().findChild<JobScrollArea*>(); }

    QScrollBar& bar() { return *list().verticalScrollBar(); }

    void click(const char* name) {
        app_.window().findChild<Button*>(QString::fromLatin1(name))->click();
    }

    void note(const char* figure, double value) {
        report_.insert(QString::fromLatin1(figure), value);
    }

    /// The CPU time of the whole process from `act` to the next frame.
    double cpuUntilFrame(const std::function<void()>& act) {
        const double begin = processSeconds();
        act();
        frames_.waitForFrame();
        return (processSeconds() - begin) * msPerSecond;
    }

    /// Notes the median of so many frames; `prepare` runs before each.
    void noteMedian(
        const char* figure, std::size_t count, const std::function<void()>& act,
        const std::function<void()>& prepare = [] {}) {
        std::vector<double> times(count);
        for (double& time : times) {
            prepare();
            time = cpuUntilFrame(act);
        }
        const auto middle = times.begin() + static_cast<std::ptrdiff_t>(count / 2);
        std::nth_element(times.begin(), middle, times.end());
        note(figure, *middle);
    }

    void add() {
        const long memoryBefore = residentKibibytes();
        const double begin = wallSeconds();
        model_->add(urls_);
        note("add_seconds", wallSeconds() - begin);
        note("first_frame", cpuUntilFrame([] {}));
        FrameWatch::settle();
        note("memory_kilobytes", static_cast<double>(residentKibibytes() - memoryBefore));
        std::size_t bytes = 0;
        for (const ConversionJob& job : model_->jobs()) {
            bytes += job.source().path().size();
        }
        note("path_bytes", static_cast<double>(bytes));
        note("jobs", static_cast<double>(model_->jobs().size()));
    }

    void scroll() {
        QWidget& viewport = *list().viewport();
        bar().setValue(bar().maximum() / 2);
        FrameWatch::settle();
        const QPointF place = QRectF(viewport.rect()).center();
        noteMedian("wheel_step", 50, [&] {
            constexpr int down = -120;
            QWheelEvent wheel(place, viewport.mapToGlobal(place), QPoint(), QPoint(0, down),
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&viewport, &wheel);
        });
        bool isDown = false;
        noteMedian("page", 20, [&] {
            isDown = !isDown;
            bar().triggerAction(isDown ? QScrollBar::SliderPageStepAdd
                                       : QScrollBar::SliderPageStepSub);
        });
        bar().setSliderDown(true);
        int step = 0;
        noteMedian("drag", 20, [&] {
            constexpr int stops = 22;
            bar().setSliderPosition(bar().maximum() / stops * ++step);
        });
        bar().setSliderDown(false);
        list().setFocus(Qt::TabFocusReason);
        FrameWatch::settle();
        bool isAtEnd = false;
        noteMedian("home_or_end", 10, [&] {
            isAtEnd = !isAtEnd;
            QKeyEvent key(QEvent::KeyPress, isAtEnd ? Qt::Key_End : Qt::Key_Home, Qt::NoModifier);
            QCoreApplication::sendEvent(app_.window().focusWidget(), &key);
        });
        bar().setValue(0);
        FrameWatch::settle();
        const QSize size = app_.window().size();
        noteMedian("resize", 10, [&] {
            constexpr int change = 10;
            // On X11 a size of before may come back: another one than the present one is asked for.
            const bool isWider = app_.window().width() > size.width();
            app_.window().resize(size + QSize(isWider ? 0 : change, 0));
        });
    }

    void batch() {
        click("destinationButton");
        FrameWatch::settle();
        note("start", cpuUntilFrame([this] { click("startButton"); }));
        waitForConversion();
        double fraction = 0;
        noteMedian("progress_report", 30, [&] {
            constexpr double step = 0.03;
            fraction += step;
            runner_->report(fraction);
        });
        noteMedian(
            "end_and_start", 20, [this] { runner_->end(); }, [this] { waitForConversion(); });
        waitForConversion();
        note("longest_response_in_batch", longestResponseInBatch());
        waitForConversion();
        remove("last_removed_in_batch", bar().maximum());
        remove("middle_removed_in_batch", bar().maximum() / 2);
        bar().setValue(0);
        FrameWatch::settle();
        const double cancelled = cpuUntilFrame([this] {
            click("cancelButton");
            waitUntil([this] { return !model_->isConverting(); });
        });
        note("cancel", cancelled);
        FrameWatch::settle();
    }

    void waitForConversion() {
        waitUntil([this] { return runner_->isWaiting(); });
        FrameWatch::settle();
    }

    /// Measures while conversions end as fast as the main thread lets them.
    double longestResponseInBatch() {
        runner_->endAtOnce(model_->jobs().size() / 2);
        const LatencyProbe probe;
        runner_->end();
        const double begin = wallSeconds();
        constexpr double seconds = 3;
        waitUntil([&] { return wallSeconds() > begin + seconds || runner_->isWaiting(); });
        const double longest = probe.longest().count();
        runner_->endAtOnce(0);
        return longest;
    }

    /// Scrolls there and removes the first removable job that is visible.
    void remove(const char* figure, int position) {
        bar().setValue(position);
        FrameWatch::settle();
        const std::vector<JobRow*> rows = list().rows();
        const auto row = std::find_if(rows.begin(), rows.end(), [](const JobRow* candidate) {
            return candidate->isRemovable() && candidate->geometry().bottom() > 0;
        });
        if (row != rows.end()) {
            note(figure, cpuUntilFrame([&] { (*row)->removeButton()->click(); }));
        }
    }

    /// million.py measures from here to the end of the process.
    void quit() {
        // Not the program's.
        urls_ = {};
        note("closed", wallSeconds());
        std::puts(QJsonDocument(report_).toJson(QJsonDocument::Compact).constData());
        app_.window().close();
    }

    std::vector<FileURL> urls_;
    std::shared_ptr<StepwiseRunner> runner_ = std::make_shared<StepwiseRunner>();
    std::shared_ptr<ConverterViewModel> model_ = makeModel(runner_);
    KestrelApp app_{model_};
    FrameWatch frames_{app_.window()};
    QJsonObject report_;
};

/// Prints how many conversions of a batch succeeded, and the seconds that it took.
void runBatch(std::size_t count) {
    const auto model = makeModel(std::make_shared<StepwiseRunner>(count));
    model->add(looseFiles(count));
    model->chooseDestination();
    const double begin = wallSeconds();
    model->start();
    while (model->isConverting()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    std::printf("%zu %.3f\n", model->completedCount(), wallSeconds() - begin);
}

} // namespace
} // namespace kestrel::bench

int main(int argc, char** argv) {
    using namespace kestrel;
    KestrelApp::prepare();
    const QApplication application(argc, argv);
    ApplicationStyle::install();
    const std::string_view mode = argc == 3 ? argv[1] : "";
    if (mode == "window" || mode == "folder") {
        return bench::User(mode == "folder" ? std::vector{FileURL(argv[2])}
                                            : bench::looseFiles(std::strtoul(argv[2], nullptr, 10)))
            .run();
    }
    if (mode == "batch") {
        bench::runBatch(std::strtoul(argv[2], nullptr, 10));
    } else {
        static_cast<void>(
            std::fputs("usage: million-jobs window COUNT | folder FOLDER | batch COUNT\n", stderr));
        return 2;
    }
    return EXIT_SUCCESS;
}
