#pragma once

#include <functional>

namespace kestrel::test {

/// Runs the probe in a forked child and returns the status that the child exits with, which is the
/// probe's result; -1 where the child did not exit. For what would change this process for good.
/// The probe may not make a thread.
int runInChild(const std::function<int()>& probe);

/// Gives up the rights of the superuser, if this process has them; false where that fails.
bool dropPrivileges();

} // namespace kestrel::test
