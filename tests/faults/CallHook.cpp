#include "CallHook.h"

#include <dlfcn.h>
#include <pthread.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace kestrel::test {

namespace {

struct Hook {
    CallHook::Before before;
    std::mutex mutex;
    int count = 0;
};

std::mutex hooksMutex;
std::array<std::shared_ptr<Hook>, 7> hooks;

std::shared_ptr<Hook>& hookOf(CallHook::Call call) {
    return hooks.at(static_cast<std::size_t>(call));
}

/// Returns the errno to fail this call with, or 0.
int errorOf(CallHook::Call call) {
    std::shared_ptr<Hook> hook;
    {
        const std::lock_guard lock(hooksMutex);
        hook = hookOf(call);
    }
    if (!hook) {
        return 0;
    }
    int count = 0;
    {
        const std::lock_guard lock(hook->mutex);
        count = ++hook->count;
    }
    return hook->before(count);
}

template <typename Function> Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// For calls that return -1 and set errno.
bool isRefused(CallHook::Call call) {
    const int error = errorOf(call);
    if (error != 0) {
        errno = error;
    }
    return error != 0;
}

bool isPipe(int descriptor) {
    struct stat status = {};

    return ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

CallHook::CallHook(Call call, Before before) : call_(call) {
    auto hook = std::make_shared<Hook>();
    hook->before = std::move(before);
    const std::lock_guard lock(hooksMutex);
    if (hookOf(call)) {
        throw std::logic_error("the call has a hook already");
    }
    hookOf(call) = std::move(hook);
}

CallHook::~CallHook() {
    const std::lock_guard lock(hooksMutex);
    hookOf(call_).reset();
}

CallHook::Before CallHook::failing(int count, int error) {
    return [count, error](int current) { return current == count ? error : 0; };
}

} // namespace kestrel::test

using kestrel::test::CallHook;
using kestrel::test::errorOf;
using kestrel::test::isPipe;
using kestrel::test::isRefused;
using kestrel::test::next;

// Symbol interposition: the executable's definitions precede libc's, for shared libraries too.
extern "C" {

int pipe2(int* ends, int flags) noexcept {
    static auto* const real = next<int(int*, int)>("pipe2");
    return isRefused(CallHook::Call::pipe) ? -1 : real(ends, flags);
}

int posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* actions,
                const posix_spawnattr_t* attributes, char* const* arguments,
                char* const* environment) {
    static auto* const real =
        next<int(pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*,
                 char* const*, char* const*)>("posix_spawn");
    const int error = errorOf(CallHook::Call::spawn);
    return error != 0 ? error : real(child, path, actions, attributes, arguments, environment);
}

// NOLINTNEXTLINE(readability-identifier-naming)
int pidfd_open(pid_t process, unsigned int flags) noexcept {
    static auto* const real = next<int(pid_t, unsigned int)>("pidfd_open");
    return isRefused(CallHook::Call::openProcess) ? -1 : real(process, flags);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) noexcept {
    static auto* const real =
        next<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>("pthread_create");
    const int error = errorOf(CallHook::Call::thread);
    return error != 0 ? error : real(thread, attributes, start, argument);
}

int mkdir(const char* path, mode_t mode) noexcept {
    static auto* const real = next<int(const char*, mode_t)>("mkdir");
    return isRefused(CallHook::Call::makeFolder) ? -1 : real(path, mode);
}

ssize_t read(int descriptor, void* buffer, size_t size) {
    static auto* const real = next<ssize_t(int, void*, size_t)>("read");
    return isPipe(descriptor) && isRefused(CallHook::Call::readPipe)
               ? -1
               : real(descriptor, buffer, size);
}

int waitid(idtype_t type, id_t id, siginfo_t* info, int options) {
    static auto* const real = next<int(idtype_t, id_t, siginfo_t*, int)>("waitid");
    return isRefused(CallHook::Call::waitForExit) ? -1 : real(type, id, info, options);
}

} // extern "C"
