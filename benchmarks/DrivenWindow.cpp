// Drives the real window as its options say, without a user, and prints the measurements as one
// line of JSON.
#include "ApplicationStyle.h"
#include "Clocks.h"
#include "FFmpegService.h"
#include "FrameWatch.h"
#include "KestrelApp.h"
#include "LatencyProbe.h"
#include "ResidentMemory.h"
#include "ScriptedDesktop.h"
#include "StandardStreams.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::bench {
namespace {

struct Options {
    std::vector<FileURL> inputs;
    std::optional<FileURL> destination;
    ConversionSettings settings;
    double seconds = 0;
    bool isWatchingStalls = false;
    bool isLingering = false;
};

FileURL urlOf(const QString& path) {
    return FileURL(QFile::encodeName(path).toStdString());
}

Options parseArguments(const QStringList& arguments) {
    QCommandLineParser parser;
    const QCommandLineOption destination(QStringLiteral("destination"),
                                         QStringLiteral("Converts into this folder."),
                                         QStringLiteral("folder"));
    const QCommandLineOption format(QStringLiteral("format"),
                                    QStringLiteral("MP3, AIFF or WAV, with 16 bits."),
                                    QStringLiteral("format"), QStringLiteral("MP3"));
    const QCommandLineOption seconds(QStringLiteral("seconds"),
                                     QStringLiteral("Cancels the batch after this time."),
                                     QStringLiteral("seconds"), QStringLiteral("0"));
    const QCommandLineOption stalls(QStringLiteral("watch-stalls"),
                                    QStringLiteral("Measures stalls, which costs some CPU time."));
    const QCommandLineOption linger(QStringLiteral("linger"),
                                    QStringLiteral("Stays idle at the end until it is killed."));
    parser.addOptions({destination, format, seconds, stalls, linger});
    parser.addPositionalArgument(QStringLiteral("inputs"), QStringLiteral("Files and folders."));
    parser.addHelpOption();
    parser.process(arguments);
    Options options;
    for (const QString& input : parser.positionalArguments()) {
        options.inputs.push_back(urlOf(input));
    }
    if (parser.isSet(destination)) {
        options.destination = urlOf(parser.value(destination));
    }
    const auto wanted = OutputFormat::fromRawValue(parser.value(format).toStdString());
    options.settings.format = wanted.value_or(OutputFormat::mp3);
    options.settings.bitDepth = PCMBitDepth::sixteen;
    options.seconds = parser.value(seconds).toDouble();
    options.isWatchingStalls = parser.isSet(stalls);
    options.isLingering = parser.isSet(linger);
    return options;
}

double pathBytes(const ConverterViewModel& model) {
    std::size_t bytes = 0;
    for (const ConversionJob& job : model.jobs()) {
        bytes += job.source().path().size();
    }
    return static_cast<double>(bytes);
}

std::shared_ptr<ConverterViewModel> makeModel(const Options& options) {
    auto panel = std::make_unique<test::ScriptedOpenPanel>();
    if (options.destination) {
        panel->answer = {*options.destination};
    }
    auto model = std::make_shared<ConverterViewModel>(ConverterViewModel::Dependencies{
        std::make_shared<FFmpegService>(), FFmpegService::locateBinary, std::move(panel),
        std::make_unique<test::ScriptedFileViewer>()});
    model->setSettings(options.settings);
    return model;
}

QJsonObject addInputs(ConverterViewModel& model, const std::vector<FileURL>& inputs,
                      FrameWatch& frames) {
    const long memoryBefore = residentKibibytes();
    const double begin = wallSeconds();
    model.add(inputs);
    const double added = wallSeconds();
    const double addedCpu = secondsOn(CLOCK_THREAD_CPUTIME_ID);
    frames.waitForFrame();
    const double painted = wallSeconds();
    const double paintedCpu = secondsOn(CLOCK_THREAD_CPUTIME_ID);
    FrameWatch::settle();
    return {{QStringLiteral("jobs"), static_cast<double>(model.jobs().size())},
            {QStringLiteral("path_bytes"), pathBytes(model)},
            {QStringLiteral("add_seconds"), added - begin},
            {QStringLiteral("paint_seconds"), painted - added},
            {QStringLiteral("paint_cpu_seconds"), paintedCpu - addedCpu},
            {QStringLiteral("memory_kilobytes"),
             static_cast<double>(residentKibibytes() - memoryBefore)}};
}

/// Measures from the start of the batch to the frame that shows its end.
QJsonObject convert(ConverterViewModel& model, const Options& options, FrameWatch& frames) {
    model.chooseDestination();
    FrameWatch::settle();
    std::optional<LatencyProbe> stalls;
    if (options.isWatchingStalls) {
        stalls.emplace();
    }
    if (options.seconds > 0) {
        QTimer::singleShot(static_cast<int>(options.seconds * 1000), &model,
                           &ConverterViewModel::cancel);
    }
    const double begin = wallSeconds();
    const double ownBegin = processSeconds();
    const double childrenBegin = childrenSeconds();
    model.start();
    while (model.isConverting()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    frames.waitForFrame();
    const double wall = wallSeconds() - begin;
    std::size_t failed = 0;
    for (const ConversionJob& job : model.jobs()) {
        failed += job.state.is(JobState::Case::failed) ? 1U : 0U;
    }
    QJsonObject report{{QStringLiteral("wall_seconds"), wall},
                       {QStringLiteral("own_seconds"), processSeconds() - ownBegin},
                       {QStringLiteral("children_seconds"), childrenSeconds() - childrenBegin},
                       {QStringLiteral("completed"), static_cast<double>(model.completedCount())},
                       {QStringLiteral("failed"), static_cast<double>(failed)}};
    if (stalls) {
        report.insert(QStringLiteral("longest_stall_milliseconds"), stalls->longest().count());
    }
    return report;
}

void run(const Options& options, KestrelApp& app, ConverterViewModel& model) {
    FrameWatch frames(app.window());
    app.window().show();
    frames.waitForFrame();
    FrameWatch::settle();
    QJsonObject report;
    if (!options.inputs.empty()) {
        report.insert(QStringLiteral("add"), addInputs(model, options.inputs, frames));
    }
    if (options.destination) {
        report.insert(QStringLiteral("batch"), convert(model, options, frames));
    }
    std::puts(QJsonDocument(report).toJson(QJsonDocument::Compact).constData());
    static_cast<void>(std::fflush(stdout));
}

} // namespace
} // namespace kestrel::bench

int main(int argc, char** argv) {
    using namespace kestrel;
    redirectMissingStandardStreams();
    KestrelApp::prepare();
    const QApplication application(argc, argv);
    ApplicationStyle::install();
    const bench::Options options = bench::parseArguments(QCoreApplication::arguments());
    const auto model = bench::makeModel(options);
    KestrelApp app(model);
    bench::run(options, app, *model);
    if (options.isLingering) {
        return QApplication::exec();
    }
    return EXIT_SUCCESS;
}
