#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        // No display is needed to list the tests.
        return RUN_ALL_TESTS();
    }
    // The tests start private buses; the user's session bus is made unreachable.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null/no-bus");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
