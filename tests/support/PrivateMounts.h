#pragma once

#include <functional>
#include <string>

namespace kestrel::test {

/// A forked child in a mount namespace of its own, in which system folders can be mounted over
/// without affecting the system. Requires root or unprivileged user namespaces.
class PrivateMounts {
  public:
    /// Runs the function in such a child and returns its result. Throws std::runtime_error with the
    /// reason when the child fails. Requires: no other thread in this process.
    static std::string run(const std::function<std::string()>& function);

    /// Moves this process to a mount namespace of its own. Throws std::runtime_error. Requires: no
    /// other thread in this process, and a folder that stays empty and unused while the process
    /// lives.
    static void enter(const std::string& folder);

    // Called in the function or after `enter`; throw std::runtime_error.

    /// Mounts an empty tmpfs over the folder.
    static void cover(const std::string& folder);

    /// The same, of limited size: a number of bytes with an optional suffix k, m or g.
    static void coverLimited(const std::string& folder, const std::string& size);

    /// The same, read-only.
    static void coverReadOnly(const std::string& folder);

    /// Bind-mounts `other` over `path`, which exists: a folder over a folder, or a file over a
    /// file.
    static void coverWith(const std::string& path, const std::string& other);

    /// Mounts a file without execute permission over `file`, which exists.
    static void coverFile(const std::string& file);
    static void uncoverFile(const std::string& file);
};

} // namespace kestrel::test
