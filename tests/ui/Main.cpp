#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests)) {
        // The list of tests needs no display.
        return RUN_ALL_TESTS();
    }
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
