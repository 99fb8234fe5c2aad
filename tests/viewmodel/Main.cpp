#include "MainThread.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Tests that see the program die run in a process of their own, which has no threads yet.
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const QCoreApplication application(argc, argv);
    // Opens what the tests' leak guards must find open already.
    kestrel::runOnMainThread([] {});
    return RUN_ALL_TESTS();
}
