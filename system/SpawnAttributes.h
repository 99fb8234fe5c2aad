#pragma once

#include "FileDescriptor.h"
#include "FileURL.h"

#include <spawn.h>
#include <sys/types.h>

#include <string>
#include <vector>

namespace kestrel {

/// posix_spawn() file actions and attributes: redirections of the standard streams, every signal
/// unblocked and at its default action. Members throw std::system_error on failure.
class SpawnAttributes {
  public:
    SpawnAttributes();
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes();

    /// Requires: `target` stays open until `spawn` returns.
    void redirect(int standardStream, const FileDescriptor& target);
    void redirectToNullDevice(int standardStream);

    /// The child inherits stdin, or gets /dev/null if stdin is closed or close-on-exec.
    void inheritStandardInput();

    /// Starts the program with its path as argv[0] and no descriptors but the standard streams. The
    /// caller must reap the child. Call at most once.
    pid_t spawn(const FileURL& executable, const std::vector<std::string>& arguments);

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

} // namespace kestrel
