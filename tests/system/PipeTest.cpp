#include "Pipe.h"

#include "RunInChild.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <system_error>
#include <utility>

namespace kestrel {
namespace {

using test::runInChild;

TEST(Pipe, isAboveTheStandardStreamsAndCloseOnExec) {
    const int status = runInChild([] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            ::close(stream);
        }
        const Pipe pipe = Pipe::make();
        for (const FileDescriptor* end : {&pipe.readEnd, &pipe.writeEnd}) {
            if (end->get() <= STDERR_FILENO || ::fcntl(end->get(), F_GETFD) != FD_CLOEXEC) {
                return 1;
            }
        }
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            if (::fcntl(stream, F_GETFD) >= 0) {
                return 2;
            }
        }
        return 0;
    });
    EXPECT_EQ(status, 0);
}

TEST(Pipe, doesNotMoveDescriptorsAboveTheStandardStreams) {
    const int status = runInChild([] {
        ::closefrom(STDERR_FILENO + 1);
        const Pipe pipe = Pipe::make();
        const bool isNext =
            pipe.readEnd.get() == STDERR_FILENO + 1 && pipe.writeEnd.get() == STDERR_FILENO + 2;
        return isNext ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

TEST(Pipe, throwsIfItCannotBeRead) {
    // A folder cannot be read.
    FileDescriptor folder(::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_TRUE(folder);
    EXPECT_THROW(readToEnd(std::move(folder)), std::system_error);
}

} // namespace
} // namespace kestrel
