#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        // No display is needed to list the tests.
        return RUN_ALL_TESTS();
    }
    // The tests start private buses; those of the user and of the system are made unreachable.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null/no-bus");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/dev/null/no-bus");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
