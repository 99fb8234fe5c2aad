#include "PrivateMounts.h"

#include "Pipe.h"
#include "TemporaryFolder.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace kestrel::test {

namespace {

// mount() arguments that are ignored.
constexpr const char* noSource = "none";
constexpr const char* noType = "none";

void check(bool isDone, const std::string& what) {
    if (!isDone) {
        throw std::runtime_error(what + ": " + std::generic_category().message(errno));
    }
}

void writeTo(const char* file, const std::string& text) {
    std::ofstream out(file);
    out << text;
}

/// Stops later mounts from propagating to other namespaces. Requires: `folder` is empty and unused.
void makeMountsPrivate(const std::string& folder) {
    constexpr unsigned long isPrivate = MS_REC | MS_PRIVATE;
    if (::mount(noSource, "/", noType, isPrivate, nullptr) == 0) {
        return;
    }
    // The root of a plain chroot is not a mount point: bind-mount it first.
    check(errno == EINVAL, "private mounts");
    check(::mount("/", folder.c_str(), noType, MS_BIND | MS_REC, nullptr) == 0, "mount the root");
    check(::mount(noSource, folder.c_str(), noType, isPrivate, nullptr) == 0, "private root");
    check(::chroot(folder.c_str()) == 0 && ::chdir("/") == 0, "enter the root");
}

void writeAll(const FileDescriptor& target, const std::string& text) {
    static_cast<void>(::write(target.get(), text.data(), text.size()) >= 0);
}

} // namespace

void PrivateMounts::enter(const std::string& folder) {
    const uid_t user = ::geteuid();
    const gid_t group = ::getegid();
    if (user == 0) {
        check(::unshare(CLONE_NEWNS) == 0, "unshare");
    } else {
        check(::unshare(CLONE_NEWNS | CLONE_NEWUSER) == 0, "unshare");
        writeTo("/proc/self/setgroups", "deny");
        // Maps the user to itself: a D-Bus daemon rejects a client that claims another uid.
        writeTo("/proc/self/uid_map", std::to_string(user) + ' ' + std::to_string(user) + " 1");
        writeTo("/proc/self/gid_map", std::to_string(group) + ' ' + std::to_string(group) + " 1");
    }
    makeMountsPrivate(folder);
}

std::string PrivateMounts::run(const std::function<std::string()>& function) {
    const TemporaryFolder folder;
    Pipe result = Pipe::make();
    const pid_t child = ::fork();
    if (child == 0) {
        int status = 0;
        try {
            enter(folder.url().path());
            writeAll(result.writeEnd, function());
        } catch (const std::exception& error) {
            writeAll(result.writeEnd, error.what());
            status = 1;
        }
        ::_exit(status);
    }
    result.writeEnd.reset();
    std::string text = readToEnd(std::move(result.readEnd));
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0) {
        throw std::runtime_error(text);
    }
    return text;
}

void PrivateMounts::cover(const std::string& folder) {
    check(::mount("tmpfs", folder.c_str(), "tmpfs", 0, nullptr) == 0, "cover " + folder);
}

void PrivateMounts::coverLimited(const std::string& folder, const std::string& size) {
    const std::string options = "mode=777,size=" + size;
    check(::mount("tmpfs", folder.c_str(), "tmpfs", 0, options.c_str()) == 0, "cover " + folder);
}

void PrivateMounts::coverReadOnly(const std::string& folder) {
    check(::mount("tmpfs", folder.c_str(), "tmpfs", MS_RDONLY, nullptr) == 0, "cover " + folder);
}

void PrivateMounts::coverWith(const std::string& path, const std::string& other) {
    check(::mount(other.c_str(), path.c_str(), noType, MS_BIND, nullptr) == 0, "cover " + path);
}

void PrivateMounts::coverFile(const std::string& file) {
    // Any file without execute permission will do.
    check(::mount("/etc/passwd", file.c_str(), noType, MS_BIND, nullptr) == 0, "cover " + file);
}

void PrivateMounts::uncoverFile(const std::string& file) {
    check(::umount2(file.c_str(), 0) == 0, "uncover " + file);
}

} // namespace kestrel::test
