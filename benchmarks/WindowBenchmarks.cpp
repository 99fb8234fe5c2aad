// Benchmarks of what a user sees and does, in the real window. Times are CPU time of the whole
// process, from the cause to the painted frame.
#include "ApplicationStyle.h"
#include "Clocks.h"
#include "FrameWatch.h"
#include "JobScrollArea.h"
#include "KestrelApp.h"
#include "PlainList.h"
#include "ScriptedDesktop.h"
#include "StepwiseRunner.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QWheelEvent>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::bench {
namespace {

constexpr std::size_t fewJobs = 10;

std::vector<FileURL> manyFiles(std::size_t count) {
    std::vector<FileURL> urls;
    urls.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        urls.emplace_back("/no-such-folder/Artist/Album " + std::to_string(number / 12) +
                          "/Track " + std::to_string(number) + ".opus");
    }
    return urls;
}

/// The real window with a queue of many jobs, and the runner that controls it.
class Window {
  public:
    /// Of `count` jobs, `leftOver` are unfinished, and the first of these is converting.
    Window(std::size_t count, std::size_t leftOver)
        : runner_(std::make_shared<StepwiseRunner>(count - leftOver)), model_(makeModel(runner_)) {
        model_->add(manyFiles(count));
        model_->chooseDestination();
        model_->start();
        waitForConversion();
        show();
    }

    StepwiseRunner& runner() { return *runner_; }

    FrameWatch& frames() { return *frames_; }

    const std::shared_ptr<ConverterViewModel>& model() const { return model_; }

    JobScrollArea& list() { return *app_->window().findChild<JobScrollArea*>(); }

    /// Runs the event loop until a conversion is blocked.
    void waitForConversion() {
        while (!runner_->isWaiting()) {
            QCoreApplication::processEvents();
        }
    }

    /// Scrolls to the converting job, a few rows from the top.
    void scrollToConverting() {
        const std::vector<ConversionJob>& jobs = model_->jobs();
        const auto isConverting = [](const ConversionJob& job) {
            return job.state.is(JobState::Case::converting);
        };
        const auto row = std::find_if(jobs.rbegin(), jobs.rend(), isConverting);
        const auto index = static_cast<std::size_t>(jobs.rend() - row) - 1;
        const RowOffsets& offsets = list().heights().offsets();
        list().verticalScrollBar()->setValue(
            static_cast<int>(offsets.top(index > 2 ? index - 2 : 0)));
        FrameWatch::settle();
    }

  private:
    static std::shared_ptr<ConverterViewModel>
    makeModel(const std::shared_ptr<ConversionRunner>& runner) {
        auto panel = std::make_unique<test::ScriptedOpenPanel>();
        panel->answer = {FileURL("/no-such-folder/Converted")};
        return std::make_shared<ConverterViewModel>(ConverterViewModel::Dependencies{
            runner, [] { return FileURL("/usr/bin/ffmpeg"); }, std::move(panel),
            std::make_unique<test::ScriptedFileViewer>()});
    }

    void show() {
        app_.emplace(model_);
        frames_.emplace(app_->window());
        app_->window().show();
        frames_->waitForFrame();
        FrameWatch::settle();
        if (model_->isConverting()) {
            scrollToConverting();
        }
    }

    std::shared_ptr<StepwiseRunner> runner_;
    std::shared_ptr<ConverterViewModel> model_;
    std::optional<KestrelApp> app_;
    std::optional<FrameWatch> frames_;
};

/// The window with `count` jobs, of which the last 2,000, or half, are unfinished: near the end, a
/// linear search takes longest.
Window& windowWith(std::size_t count) {
    static auto* const windows = new std::map<std::size_t, std::unique_ptr<Window>>;
    std::unique_ptr<Window>& window = (*windows)[count];
    if (!window) {
        constexpr std::size_t enough = 2000;
        window = std::make_unique<Window>(count, std::min(enough, count / 2));
    }
    return *window;
}

/// A window with few unfinished jobs. Each call makes another one: its batch ends soon. None is
/// ever destroyed, as its worker is blocked.
Window& windowWithUnfinished() {
    static auto* const windows = new std::vector<std::unique_ptr<Window>>;
    windows->push_back(std::make_unique<Window>(fewJobs, fewJobs));
    return *windows->back();
}

/// Shows ready pictures.
class PictureView : public QWidget {
  public:
    explicit PictureView(QWidget* parent) : QWidget(parent) {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

    void setPicture(const QPixmap& picture) {
        picture_ = picture;
        update();
    }

  protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).drawPixmap(0, 0, picture_); }

  private:
    QPixmap picture_;
};

/// Shows a view in the place of the list.
void showOverList(Window& window, QWidget& view) {
    view.setGeometry(window.list().geometry());
    view.raise();
    view.show();
    FrameWatch::settle();
}

/// Measures the CPU time from `act` to the next frame.
template <typename Act> void timeUntilFrame(benchmark::State& state, Window& window, Act act) {
    const double begin = processSeconds();
    act();
    window.frames().waitForFrame();
    state.SetIterationTime(processSeconds() - begin);
}

void progressReport(benchmark::State& state) {
    Window& window = windowWith(static_cast<std::size_t>(state.range(0)));
    window.scrollToConverting();
    double fraction = 0;
    while (state.KeepRunning()) {
        fraction = fraction > 0.9 ? 0.1 : fraction + 0.07;
        timeUntilFrame(state, window, [&] { window.runner().report(fraction); });
    }
}

/// The end of one conversion and the start of the next one: two rows change their height.
void stateChange(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    Window& window = count > fewJobs ? windowWith(count) : windowWithUnfinished();
    while (state.KeepRunning()) {
        window.scrollToConverting();
        timeUntilFrame(state, window, [&] { window.runner().end(); });
        window.waitForConversion();
    }
}

/// The passes over the queue that a refresh makes.
void walk(benchmark::State& state, Window& window) {
    const double begin = processSeconds();
    benchmark::DoNotOptimize(window.model()->completedCount());
    benchmark::DoNotOptimize(window.model()->overallProgress());
    state.SetIterationTime(processSeconds() - begin);
}

void queueWalk(benchmark::State& state) {
    Window& window = windowWith(static_cast<std::size_t>(state.range(0)));
    while (state.KeepRunning()) {
        walk(state, window);
    }
}

/// The same once the queue has left the processor's caches, as before an end and a start.
void queueWalkAfterPause(benchmark::State& state) {
    Window& window = windowWith(static_cast<std::size_t>(state.range(0)));
    while (state.KeepRunning()) {
        window.scrollToConverting();
        walk(state, window);
    }
}

/// Scrolls by one step of the wheel at a time, back and forth.
void scrollByWheel(benchmark::State& state, Window& window, QAbstractScrollArea& area) {
    QScrollBar& bar = *area.verticalScrollBar();
    QWidget& viewport = *area.viewport();
    bar.setValue(bar.maximum() / 2);
    FrameWatch::settle();
    const QPointF place = QRectF(viewport.rect()).center();
    const int step = bar.singleStep() * QApplication::wheelScrollLines();
    int steps = 0;
    int direction = 1;
    while (state.KeepRunning()) {
        // Over more rows than are visible.
        constexpr int stepsOneWay = 100;
        const int next = bar.value() + direction * step;
        if (++steps > stepsOneWay || next < bar.minimum() || next > bar.maximum()) {
            direction = -direction;
            steps = 1;
        }
        constexpr int degrees = 120;
        QWheelEvent wheel(place, viewport.mapToGlobal(place), QPoint(),
                          QPoint(0, -direction * degrees), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        timeUntilFrame(state, window, [&] { QCoreApplication::sendEvent(&viewport, &wheel); });
    }
}

void wheelStep(benchmark::State& state) {
    Window& window = windowWith(static_cast<std::size_t>(state.range(0)));
    scrollByWheel(state, window, window.list());
}

/// The same in a plain item view.
void wheelStepOfPlainList(benchmark::State& state) {
    Window& window = windowWith(static_cast<std::size_t>(state.range(0)));
    JobScrollArea& list = window.list();
    PlainList plain(window.model(), list.heights(), list.parentWidget());
    plain.verticalScrollBar()->setSingleStep(list.verticalScrollBar()->singleStep());
    showOverList(window, plain);
    scrollByWheel(state, window, plain);
}

/// The same pixels, painted from pictures of the list before and after a wheel step.
void wheelStepOfPictures(benchmark::State& state) {
    Window& window = windowWith(static_cast<std::size_t>(state.range(0)));
    JobScrollArea& list = window.list();
    QScrollBar& bar = *list.verticalScrollBar();
    bar.setValue(bar.maximum() / 2);
    const QPixmap before = list.grab();
    bar.setValue(bar.value() + bar.singleStep() * QApplication::wheelScrollLines());
    const QPixmap after = list.grab();
    PictureView view(list.parentWidget());
    showOverList(window, view);
    int steps = 0;
    while (state.KeepRunning()) {
        const QPixmap& picture = ++steps % 2 == 0 ? before : after;
        timeUntilFrame(state, window, [&] { view.setPicture(picture); });
    }
}

BENCHMARK(progressReport)->Arg(fewJobs)->Arg(100'000)->UseManualTime()->Iterations(300);
// Of ten ends, a start follows nine.
BENCHMARK(stateChange)->Arg(fewJobs)->UseManualTime()->Iterations(8);
BENCHMARK(stateChange)->Arg(100'000)->UseManualTime()->Iterations(20);
BENCHMARK(queueWalk)->Arg(fewJobs)->Arg(100'000)->UseManualTime()->Iterations(300);
BENCHMARK(queueWalkAfterPause)->Arg(100'000)->UseManualTime()->Iterations(20);
BENCHMARK(wheelStep)->Arg(fewJobs)->Arg(100'000)->UseManualTime()->Iterations(400);
BENCHMARK(wheelStepOfPlainList)->Arg(fewJobs)->Arg(100'000)->UseManualTime()->Iterations(400);
BENCHMARK(wheelStepOfPictures)->Arg(fewJobs)->Arg(100'000)->UseManualTime()->Iterations(400);

} // namespace
} // namespace kestrel::bench

int main(int argc, char** argv) {
    kestrel::KestrelApp::prepare();
    const QApplication application(argc, argv);
    kestrel::ApplicationStyle::install();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    // Worker threads are still blocked in conversions, so destructors must not run.
    static_cast<void>(std::fflush(nullptr));
    std::_Exit(0);
}
