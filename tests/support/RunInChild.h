#pragma once

#include <functional>

namespace kestrel::test {

/// Runs the function in a forked child and returns its result, the child's exit status, or -1 if
/// the child did not exit. For irreversible changes of the process. The function must not start a
/// thread.
int runInChild(const std::function<int()>& function);

/// Drops root privileges, if any. Returns false on failure.
bool dropPrivileges();

} // namespace kestrel::test
