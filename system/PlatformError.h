#pragma once

#include "FileURL.h"

#include <stdexcept>
#include <system_error>

namespace kestrel {

/// The system refused something. `what()` is a sentence for the user, UTF-8, that names the path.
class PlatformError final : public std::runtime_error {
  public:
    static PlatformError folderNotCreated(const FileURL& folder, std::error_code reason);
    static PlatformError programNotStarted(const FileURL& program, std::error_code reason);

    /// Reading the program's output, or waiting for its end, failed.
    static PlatformError programLost(const FileURL& program, std::error_code reason);

    /// The system's reason.
    std::error_code code() const noexcept { return code_; }

  private:
    PlatformError(const char* sentence, const FileURL& url, std::error_code reason);

    std::error_code code_;
};

} // namespace kestrel
