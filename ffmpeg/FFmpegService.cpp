#include "FFmpegService.h"

#include "ChildProcess.h"
#include "DiagnosticsTail.h"
#include "DurationScanner.h"
#include "ExecutableSearch.h"
#include "FFmpegArguments.h"
#include "FFmpegError.h"
#include "FileSystem.h"
#include "LineSplitter.h"
#include "Pipe.h"
#include "PlatformError.h"
#include "ProgressParser.h"
#include "RunDetached.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <exception>
#include <future>
#include <string>
#include <system_error>
#include <utility>

namespace kestrel {

namespace {

constexpr std::array<std::string_view, 3> candidatePaths{
    "/opt/homebrew/bin/ffmpeg", "/usr/local/bin/ffmpeg", "/usr/bin/ffmpeg"};

void createFolder(const FileURL& folder) {
    if (const std::error_code error = createFolders(folder)) {
        throw PlatformError::folderNotCreated(folder, error);
    }
}

/// Returns whether ffmpeg reported the end of its progress.
bool reportProgress(const FileDescriptor& progress, double duration,
                    const ConversionRunner::ProgressHandler& onProgress) {
    bool hasEnded = false;
    LineSplitter lines([&](std::string_view line) {
        hasEnded = hasEnded || isProgressEnd(line);
        if (const std::optional<double> fraction = progressFraction(line, duration)) {
            onProgress(*fraction);
        }
    });
    readChunks(progress, [&lines](std::string_view chunk) { lines.feed(chunk); });
    lines.finish();
    return hasEnded;
}

/// Returns std::nullopt if stat() fails.
std::optional<struct stat> statusOf(const FileURL& file) noexcept {
    struct stat status = {};
    return ::stat(file.path().c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

/// Returns true iff it is still the same file (device and inode) with the same size and mtime.
bool isUnchanged(const struct stat& before, const std::optional<struct stat>& after) noexcept {
    return after && after->st_dev == before.st_dev && after->st_ino == before.st_ino &&
           after->st_size == before.st_size && after->st_mtim.tv_sec == before.st_mtim.tv_sec &&
           after->st_mtim.tv_nsec == before.st_mtim.tv_nsec;
}

/// Reads stderr to its end and closes it. Throws std::system_error.
std::string readTail(FileDescriptor source) {
    DiagnosticsTail tail;
    readChunks(source, [&tail](std::string_view chunk) { tail.feed(chunk); });
    return tail.finish();
}

/// Throws PlatformError when no thread can be created: before there is a child that needs one.
std::future<std::string> readInBackground(const FileURL& ffmpeg,
                                          std::future<FileDescriptor> source) {
    try {
        return runDetached(
            [source = std::move(source)]() mutable { return readTail(source.get()); });
    } catch (const std::system_error& failure) {
        throw PlatformError::programNotStarted(ffmpeg, failure.code());
    }
}

double probeDuration(const FileURL& source, const FileURL& ffmpeg) {
    ChildProcess probe(ffmpeg, probeArguments(source), ChildProcess::StandardOutput::nullDevice);
    probe.launch();
    DurationScanner duration;
    readChunks(probe.takeStandardError(),
               [&duration](std::string_view chunk) { duration.feed(chunk); });
    // With no output file given, ffmpeg describes the input and exits with an error.
    static_cast<void>(probe.waitUntilExit());
    return duration.finish();
}

/// A duration probe would consume what the conversion needs, or wait for a writer, and it cannot be
/// interrupted.
bool isFifoOrCharacterDevice(const FileURL& source) noexcept {
    const std::optional<struct stat> status = statusOf(source);
    return status && (S_ISFIFO(status->st_mode) || S_ISCHR(status->st_mode));
}

void lowerPriorityOfThisThread() noexcept {
    constexpr int niceness = 5;
    // On Linux, niceness is per thread, and the child inherits it.
    const int own = ::getpriority(PRIO_PROCESS, 0);
    static_cast<void>(::setpriority(PRIO_PROCESS, 0, own + niceness));
}

} // namespace

/// Keeps stage and child of the service for one conversion.
class FFmpegService::ConversionScope {
  public:
    explicit ConversionScope(FFmpegService& service) : service_(service) {
        const std::lock_guard lock(service_.mutex_);
        service_.isInterruptPending_ =
            service_.isInterruptPending_ && service_.stage_ == Stage::beforeLaunch;
        service_.stage_ = Stage::beforeLaunch;
    }

    ConversionScope(const ConversionScope&) = delete;
    ConversionScope& operator=(const ConversionScope&) = delete;

    ~ConversionScope() { enter(Stage::idle, nullptr); }

    /// Launches the child, and interrupts it if that was asked for before.
    void launch(const std::shared_ptr<ChildProcess>& child) {
        enter(Stage::beforeLaunch, child);
        child->launch();
        if (enter(Stage::launched, child)) {
            child->interrupt();
        }
    }

  private:
    /// Returns whether an interrupt is pending.
    bool enter(Stage stage, std::shared_ptr<ChildProcess> child) noexcept {
        const std::lock_guard lock(service_.mutex_);
        service_.stage_ = stage;
        // Swapped, so that the previous pointer is released after the mutex.
        service_.activeProcess_.swap(child);
        return service_.isInterruptPending_;
    }

    FFmpegService& service_;
};

FFmpegService::FFmpegService(BinaryLocator locator) : locator_(std::move(locator)) {}

std::optional<FileURL> FFmpegService::locateBinary() {
    return firstExecutable(candidatePaths);
}

void FFmpegService::convert(const FileURL& source, const FileURL& destination,
                            const ConversionSettings& settings, const ProgressHandler& onProgress) {
    ConversionScope scope(*this);
    const std::optional<FileURL> ffmpeg = locator_();
    if (!ffmpeg) {
        throw FFmpegError::notFound();
    }
    const double duration = mediaDuration(source, *ffmpeg);
    createFolder(destination.deletingLastPathComponent());

    const auto child =
        std::make_shared<ChildProcess>(*ffmpeg, conversionArguments(source, destination, settings),
                                       ChildProcess::StandardOutput::pipe);
    // Read concurrently with the progress, so that neither pipe fills up and blocks the child.
    std::promise<FileDescriptor> standardError;
    std::future<std::string> diagnostics = readInBackground(*ffmpeg, standardError.get_future());
    const std::optional<struct stat> existing =
        settings.overwrite ? std::nullopt : statusOf(destination);
    scope.launch(child);
    standardError.set_value(child->takeStandardError());
    try {
        const bool hasEnded = reportProgress(child->takeStandardOutput(), duration, onProgress);
        const ProcessExit exit = child->waitUntilExit();
        const std::string tail = diagnostics.get();
        if (exit.reason == ProcessExit::Reason::uncaughtSignal) {
            throw FFmpegError::cancelled();
        }
        // On a refused overwrite, ffmpeg 5.1 exits with status 1, but 7.1 and 9.0 exit with 0.
        const bool isRefused =
            existing && !hasEnded && isUnchanged(*existing, statusOf(destination));
        if (exit.code != 0 || isRefused) {
            throw FFmpegError::processFailed(tail);
        }
    } catch (const std::system_error& failure) {
        throw PlatformError::programLost(*ffmpeg, failure.code());
    }
}

void FFmpegService::prepareConversion() {
    const std::lock_guard lock(mutex_);
    stage_ = Stage::beforeLaunch;
    isInterruptPending_ = false;
}

void FFmpegService::interruptActiveProcess() {
    std::shared_ptr<ChildProcess> child;
    {
        const std::lock_guard lock(mutex_);
        if (stage_ != Stage::launched) {
            isInterruptPending_ = true;
            return;
        }
        child = activeProcess_;
    }
    child->interrupt();
}

double FFmpegService::mediaDuration(const FileURL& source, const FileURL& ffmpeg) {
    if (isFifoOrCharacterDevice(source)) {
        return 0;
    }
    try {
        return runDetached([source, ffmpeg] {
                   lowerPriorityOfThisThread();
                   return probeDuration(source, ffmpeg);
               })
            .get();
    } catch (const std::exception&) {
        // A failed probe only disables the progress fractions.
        return 0;
    }
}

} // namespace kestrel
