#pragma once

#include "FileDescriptor.h"
#include "FileURL.h"

#include <spawn.h>
#include <sys/types.h>

#include <string>
#include <vector>

namespace kestrel {

/// How a child is to be started: which of its standard streams go where, with every signal
/// unblocked and at its default. All members throw std::system_error.
class SpawnAttributes {
  public:
    SpawnAttributes();
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes();

    /// The target must stay open until the child has been started.
    void redirect(int standardStream, const FileDescriptor& target);
    void redirectToNullDevice(int standardStream);

    /// Leaves standard input as it is, or gives the child the null device where it would have none.
    void inheritStandardInput();

    /// Starts the program with its path as the zeroth argument and no descriptors but the standard
    /// streams; the caller owes the child a wait. Once only.
    pid_t spawn(const FileURL& executable, const std::vector<std::string>& arguments);

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

} // namespace kestrel
