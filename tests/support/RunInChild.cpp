#include "RunInChild.h"

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace kestrel::test {

int runInChild(const std::function<int()>& function) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(function());
    }
    int status = 0;
    pid_t waited = -1;
    do {
        waited = ::waitpid(child, &status, 0);
    } while (waited < 0 && errno == EINTR);
    return waited == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool dropPrivileges() {
    constexpr unsigned nobody = 65534;
    return ::geteuid() != 0 || (::setgroups(0, nullptr) == 0 && ::setgid(nobody) == 0 &&
                                ::setuid(nobody) == 0 && ::geteuid() == nobody);
}

} // namespace kestrel::test
