#include "MainThread.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Death tests re-execute the program, so that the child has no other threads.
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const QCoreApplication application(argc, argv);
    // Opens the task queue's descriptors before the first LeakGuard counts them.
    kestrel::runOnMainThread([] {});
    return RUN_ALL_TESTS();
}
