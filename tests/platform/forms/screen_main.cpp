// main() of the tests that need a real screen; it starts a screen of its own.
#include "support/test_screen.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <iostream>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
    try {
        const tolvek::test::TestScreen screen;
        qputenv("DISPLAY", screen.name().c_str());
        qputenv("QT_QPA_PLATFORM", "xcb");
        QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        return RUN_ALL_TESTS();
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
