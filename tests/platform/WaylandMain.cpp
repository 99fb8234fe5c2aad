#include "Sway.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        // No compositor is needed to list the tests.
        return RUN_ALL_TESTS();
    }
    const kestrel::test::Sway sway;
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
