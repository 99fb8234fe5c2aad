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

    // What follows is for the function: they throw std::runtime_error.

    /// Puts an empty folder over the folder.
    static void cover(const std::string& folder);

    /// Puts an empty file that cannot be executed over the file, which must exist.
    static void coverFile(const std::string& file);
    static void uncoverFile(const std::string& file);
};

} // namespace kestrel::test
