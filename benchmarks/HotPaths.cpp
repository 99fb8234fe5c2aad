// Runs one hot path, whose cost grows with the number of files, once for an instruction counter,
// which counts inside countedWork() alone.
#include "ContentView.h"
#include "ConverterViewModel.h"
#include "DroppedItem.h"
#include "LatencyProbe.h"
#include "LineSplitter.h"
#include "ProgressParser.h"
#include "ScriptedDesktop.h"
#include "ScriptedRunner.h"

#include <QApplication>

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The counter finds it by its name.
extern "C" __attribute__((noinline)) void countedWork(const std::function<void()>& work) {
    work();
}

namespace kestrel::bench {
namespace {

std::shared_ptr<ConverterViewModel> makeModel() {
    return std::make_shared<ConverterViewModel>(ConverterViewModel::Dependencies{
        std::make_shared<test::ScriptedRunner>(), [] { return std::nullopt; },
        std::make_unique<test::ScriptedOpenPanel>(), std::make_unique<test::ScriptedFileViewer>()});
}

void intake(const std::string& tree) {
    const auto model = makeModel();
    // Warm-up: one-time initialisation is not part of the path.
    model->add({FileURL(tree + "/no-such-folder/first.opus")});
    countedWork([&] { model->add({FileURL(tree)}); });
    std::printf("%zu\n", model->jobs().size() - 1);
}

void refresh(std::size_t count) {
    const auto model = makeModel();
    std::vector<FileURL> urls;
    for (std::size_t number = 0; number < count; ++number) {
        urls.emplace_back("/no-such-folder/" + std::to_string(number) + ".opus");
    }
    model->add(urls);
    ContentView contents(model, [] { return std::nullopt; });
    contents.resize(960, 640);
    contents.show();
    QCoreApplication::processEvents();
    countedWork([&] { contents.refresh(); });
    std::printf("%zu\n", model->jobs().size());
}

/// Prints the number of jobs, the seconds until all are queued and painted, and the longest
/// response time of the event loop meanwhile, in milliseconds.
void drop(std::size_t count) {
    const auto model = makeModel();
    ContentView contents(model, [] { return std::nullopt; });
    contents.resize(960, 640);
    contents.show();
    QCoreApplication::processEvents();
    std::vector<DroppedItem> items;
    for (std::size_t number = 0; number < count; ++number) {
        items.emplace_back("file:///no-such-folder/" + std::to_string(number) + ".opus");
    }
    LatencyProbe latency;
    const auto start = std::chrono::steady_clock::now();
    model->handleDrop(items);
    while (model->jobs().size() < count) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%zu %.4f %.1f\n", model->jobs().size(), seconds.count(),
                latency.longest().count());
}

void progressLines(std::size_t count) {
    std::string stream;
    for (std::size_t line = 0; line < count; ++line) {
        stream += "out_time_ms=" + std::to_string(line * 523'220) + '\n';
    }
    std::size_t fractions = 0;
    countedWork([&] {
        LineSplitter lines([&fractions](std::string_view line) {
            fractions += progressFraction(line, 10'000).has_value() ? 1U : 0U;
        });
        lines.feed(stream);
        lines.finish();
    });
    std::printf("%zu\n", fractions);
}

} // namespace
} // namespace kestrel::bench

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const std::string_view path = argc == 3 ? argv[1] : "";
    if (path == "intake") {
        kestrel::bench::intake(argv[2]);
    } else if (path == "refresh") {
        kestrel::bench::refresh(std::strtoul(argv[2], nullptr, 10));
    } else if (path == "drop") {
        kestrel::bench::drop(std::strtoul(argv[2], nullptr, 10));
    } else if (path == "progress-lines") {
        kestrel::bench::progressLines(std::strtoul(argv[2], nullptr, 10));
    } else {
        static_cast<void>(std::fputs(
            "usage: hot-paths intake FOLDER | refresh COUNT | drop COUNT | progress-lines COUNT\n",
            stderr));
        return 2;
    }
    return 0;
}
