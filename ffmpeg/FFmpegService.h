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

/// Runs conversions as ffmpeg children, one at a time.
class FFmpegService final : public ConversionRunner {
  public:
    /// Tells the executable to use, or none where ffmpeg is not installed. Any thread.
    using BinaryLocator = std::function<std::optional<FileURL>()>;

    explicit FFmpegService(BinaryLocator locator = locateBinary);

    /// ffmpeg at the first of three fixed paths that has an executable file, or none. Looks anew at
    /// every call; a quick file-system check. Any thread.
    static std::optional<FileURL> locateBinary();

    /// The extensions of accepted input files, in lower case, without dots, to be compared with the
    /// lower-cased extension of a name.
    static constexpr std::array<std::string_view, 3> supportedExtensions{"opus", "ogg", "oga"};

    /// Leaves no child, thread or descriptor behind, except when reading the child's progress, or
    /// handing it over, fails: then the child is left to end by itself. The whole of ffmpeg's
    /// diagnostics is kept in memory while it runs.
    void convert(const FileURL& source, const FileURL& destination,
                 const ConversionSettings& settings, const ProgressHandler& onProgress) override;

    void interruptActiveProcess() override;

  private:
    class ActiveProcessScope;

    /// Seconds; 0 where the length cannot be read, for whatever reason. Pipes and character devices
    /// are not even asked.
    static double mediaDuration(const FileURL& source, const FileURL& ffmpeg);

    BinaryLocator locator_;
    /// Guards `activeProcess_` and nothing else.
    std::mutex lock_;
    /// The conversion child between its making and its end.
    std::shared_ptr<ChildProcess> activeProcess_;
};

} // namespace kestrel
