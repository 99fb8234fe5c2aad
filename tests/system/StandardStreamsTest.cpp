#include "StandardStreams.h"

#include "ProcessCounts.h"
#include "RunInChild.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cstddef>

namespace kestrel::test {
namespace {

/// Returns whether it is /dev/null, without FD_CLOEXEC.
bool isNullDevice(int descriptor) {
    struct stat status = {};

    return ::fstat(descriptor, &status) == 0 && S_ISCHR(status.st_mode) &&
           status.st_rdev == makedev(1, 3) && ::fcntl(descriptor, F_GETFD) == 0;
}

ino_t inodeOf(int descriptor) {
    struct stat status = {};

    return ::fstat(descriptor, &status) == 0 ? status.st_ino : 0;
}

TEST(StandardStreams, areTheNullDeviceIfClosed) {
    for (int closed = 1; closed < 8; ++closed) {
        const int result = runInChild([closed] {
            std::array<int, 2> ends{};
            if (::pipe(ends.data()) != 0) {
                return 100;
            }
            for (int stream = 0; stream < 3; ++stream) {
                ::dup2(ends[1], stream);
            }
            for (int stream = 0; stream < 3; ++stream) {
                if ((closed >> stream & 1) != 0) {
                    ::close(stream);
                }
            }
            redirectMissingStandardStreams();
            for (int stream = 0; stream < 3; ++stream) {
                const bool isRight = (closed >> stream & 1) != 0
                                         ? isNullDevice(stream)
                                         : inodeOf(stream) == inodeOf(ends[1]);
                if (!isRight) {
                    return stream + 1;
                }
            }
            return 0;
        });
        EXPECT_EQ(result, 0) << closed;
    }
}

TEST(StandardStreams, replaceATerminalOnStdin) {
    EXPECT_EQ(runInChild([] {
                  int master = -1;
                  int terminal = -1;
                  if (::openpty(&master, &terminal, nullptr, nullptr, nullptr) != 0) {
                      return 100;
                  }
                  for (int stream = 0; stream < 3; ++stream) {
                      ::dup2(terminal, stream);
                  }
                  redirectMissingStandardStreams();
                  return isNullDevice(0) && ::isatty(1) != 0 && ::isatty(2) != 0 ? 0 : 1;
              }),
              0);
}

TEST(StandardStreams, areUnchangedOtherwise) {
    EXPECT_EQ(runInChild([] {
                  std::array<int, 2> ends{};
                  if (::pipe(ends.data()) != 0) {
                      return 100;
                  }
                  ::dup2(ends[0], 0);
                  const ino_t before = inodeOf(0);
                  const std::size_t count = ProcessCounts::now().descriptors;
                  redirectMissingStandardStreams();
                  return inodeOf(0) == before && ProcessCounts::now().descriptors == count ? 0 : 1;
              }),
              0);
}

} // namespace
} // namespace kestrel::test
