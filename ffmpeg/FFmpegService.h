#pragma once

#include "ConversionRunner.h"
#include "ConversionSettings.h"
#include "FileURL.h"

#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>

namespace kestrel {

class ChildProcess;

/// Runs one conversion at a time, as an ffmpeg child process.
class FFmpegService final : public ConversionRunner {
  public:
    /// Returns the ffmpeg executable, or std::nullopt if it is not installed. Called on any thread.
    using BinaryLocator = std::function<std::optional<FileURL>()>;

    explicit FFmpegService(BinaryLocator locator = locateBinary);

    /// Returns the first of three fixed paths that is an executable file, or std::nullopt. Not
    /// cached: a quick file-system check at every call. Thread-safe.
    static std::optional<FileURL> locateBinary();

    /// Extensions of accepted input files, in lower case, without dots. Compare with the
    /// lower-cased extension.
    static constexpr std::array<std::string_view, 3> supportedExtensions{"opus", "ogg", "oga"};

    /// Leaves no child, thread or descriptor behind, except when reading or reporting progress
    /// fails: then the child is not waited for, but reaped in the background. Keeps the last 8
    /// lines of stderr in memory.
    void convert(const FileURL& source, const FileURL& destination,
                 const ConversionSettings& settings, const ProgressHandler& onProgress) override;

    void prepareConversion() override;

    void interruptActiveProcess() override;

  private:
    class ConversionScope;

    /// Where the conversion is; an interrupt reaches it before and after the launch.
    enum class Stage : unsigned char { idle, beforeLaunch, launched };

    /// Runs the duration probe. Returns seconds, or 0 if it fails for any reason. FIFOs and
    /// character devices are not probed.
    static double mediaDuration(const FileURL& source, const FileURL& ffmpeg);

    BinaryLocator locator_;
    /// Guards the members below.
    std::mutex mutex_;
    /// The child of the conversion, never of the probe; null when there is none.
    std::shared_ptr<ChildProcess> activeProcess_;
    Stage stage_ = Stage::idle;
    /// Whether an interrupt came before the launch.
    bool isInterruptPending_ = false;
};

} // namespace kestrel
