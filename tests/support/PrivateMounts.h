#pragma once

#include <functional>
#include <string>

namespace kestrel::test {

/// A child of this process with mounts of its own, in which system folders can be covered while the
/// machine keeps its own. Needs root, or a kernel that lets users have namespaces.
class PrivateMounts {
  public:
    /// Runs the function in such a child and returns its result. Throws std::runtime_error with the
    /// reason when the child fails. This process must have no other thread.
    static std::string run(const std::function<std::string()>& function);

    /// Gives this process mounts of its own. Needs a folder, empty and in nobody's way, for as long
    /// as the process lives. Throws std::runtime_error. This process must have no other thread.
    static void enter(const std::string& folder);

    // What follows is for the function, or after `enter`: they throw std::runtime_error.

    /// Puts an empty folder over the folder.
    static void cover(const std::string& folder);

    /// The same, with room for so many bytes: a number, or one with k, m or g behind it.
    static void coverLimited(const std::string& folder, const std::string& size);

    /// The same, where nothing can be made.
    static void coverReadOnly(const std::string& folder);

    /// Puts a folder over a folder, or a file over a file; the covered one must exist.
    static void coverWith(const std::string& path, const std::string& other);

    /// Puts an empty file that cannot be executed over the file, which must exist.
    static void coverFile(const std::string& file);
    static void uncoverFile(const std::string& file);
};

} // namespace kestrel::test
