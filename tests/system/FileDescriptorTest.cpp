#include "FileDescriptor.h"

#include "LeakGuard.h"
#include "RunInChild.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace kestrel {
namespace {

using test::LeakGuard;
using test::runInChild;

bool isOpen(int descriptor) {
    return ::fcntl(descriptor, F_GETFD) >= 0;
}

FileDescriptor nullDevice() {
    return FileDescriptor(::open("/dev/null", O_RDWR | O_CLOEXEC));
}

TEST(FileDescriptor, isNoneByDefault) {
    const FileDescriptor none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.get(), -1);
}

TEST(FileDescriptor, closesOnDestructionAndReset) {
    const LeakGuard guard;
    int number = -1;
    {
        const FileDescriptor descriptor = nullDevice();
        number = descriptor.get();
        EXPECT_TRUE(descriptor);
        EXPECT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
    FileDescriptor descriptor = nullDevice();
    number = descriptor.get();
    descriptor.reset();
    EXPECT_FALSE(isOpen(number));
    EXPECT_FALSE(descriptor);
    EXPECT_EQ(descriptor.get(), -1);
    descriptor.reset();
}

TEST(FileDescriptor, transfersOwnershipOnMove) {
    const LeakGuard guard;
    FileDescriptor first = nullDevice();
    const int number = first.get();
    FileDescriptor second(std::move(first));
    EXPECT_EQ(second.get(), number);
    EXPECT_EQ(first.get(), -1); // NOLINT(bugprone-use-after-move): the moved-from state
    FileDescriptor third = nullDevice();
    const int replaced = third.get();
    third = std::move(second);
    EXPECT_EQ(third.get(), number);
    EXPECT_EQ(second.get(), -1); // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(isOpen(number));
    EXPECT_FALSE(isOpen(replaced));
}

TEST(FileDescriptor, survivesSelfMove) {
    const LeakGuard guard;
    FileDescriptor descriptor = nullDevice();
    FileDescriptor& same = descriptor;
    descriptor = std::move(same);
    EXPECT_TRUE(isOpen(descriptor.get()));
}

TEST(FileDescriptor, ownsDescriptorZero) {
    const int status = runInChild([] {
        ::close(STDIN_FILENO);
        FileDescriptor zero = nullDevice();
        const bool isOwned = zero.get() == STDIN_FILENO && zero && isOpen(STDIN_FILENO);
        zero.reset();
        return isOwned && !isOpen(STDIN_FILENO) ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace kestrel
