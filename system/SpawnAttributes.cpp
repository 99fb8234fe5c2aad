#include "SpawnAttributes.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <system_error>

namespace kestrel {

namespace {

void check(int error, const char* call) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), call);
    }
}

} // namespace

SpawnAttributes::SpawnAttributes() {
    // Neither call can fail on Linux, and the destructor does not run when a constructor throws.
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
    sigset_t none{};
    sigset_t all{};
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

SpawnAttributes::~SpawnAttributes() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
}

void SpawnAttributes::redirect(int standardStream, const FileDescriptor& target) {
    check(::posix_spawn_file_actions_adddup2(&actions_, target.get(), standardStream),
          "posix_spawn_file_actions_adddup2");
}

void SpawnAttributes::redirectToNullDevice(int standardStream) {
    check(::posix_spawn_file_actions_addopen(&actions_, standardStream, "/dev/null", O_RDWR, 0),
          "posix_spawn_file_actions_addopen");
}

void SpawnAttributes::inheritStandardInput() {
    const int flags = ::fcntl(STDIN_FILENO, F_GETFD);
    // Without a stdin, the first file that the child opens would become descriptor 0 and would be
    // read as stdin.
    if (flags < 0 || (flags & FD_CLOEXEC) != 0) {
        redirectToNullDevice(STDIN_FILENO);
    }
}

pid_t SpawnAttributes::spawn(const FileURL& executable, const std::vector<std::string>& arguments) {
    std::vector<char*> vector;
    vector.reserve(arguments.size() + 2);
    // posix_spawn() takes char* const[], as main() does, but does not write to the strings.
    vector.push_back(const_cast<char*>(executable.path().c_str()));
    for (const std::string& argument : arguments) {
        vector.push_back(const_cast<char*>(argument.c_str()));
    }
    vector.push_back(nullptr);
    // This program may have inherited descriptors without FD_CLOEXEC.
    check(::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1),
          "posix_spawn_file_actions_addclosefrom_np");
    pid_t child{};
    check(::posix_spawn(&child, executable.path().c_str(), &actions_, &attributes_, vector.data(),
                        environ),
          "posix_spawn");
    return child;
}

} // namespace kestrel
