// Included first: the X11 headers define macros with names that this header uses.
#include <gtest/gtest.h>

#include "platform/system/linux/x11_screen.h"

#include "platform/system/desktop.h"
#include "support/test_screen.h"

#include <cstdlib>
#include <system_error>

namespace tolvek::test {

class X11ScreenTest : public testing::Test {
protected:
    X11ScreenTest()
    {
        if (const char* name = std::getenv("DISPLAY")) before = name;
        unsetenv("DISPLAY");
    }
    ~X11ScreenTest() override { setenv("DISPLAY", before.c_str(), 1); }

    static void show(const TestScreen& screen) { setenv("DISPLAY", screen.name().c_str(), 1); }
    template <class Work> static std::error_code failureOf(Work work)
    {
        try {
            work();
        } catch (const std::system_error& failure) {
            return failure.code();
        }
        return {};
    }

    std::string before;
};

TEST_F(X11ScreenTest, WithoutAScreenNothingConnects)
{
    const auto missing = std::errc::no_such_device_or_address;
    EXPECT_EQ(failureOf([] { X11Screen(); }), missing);
    setenv("DISPLAY", ":9999", 1);
    EXPECT_EQ(failureOf([] { activateProcess(1); }), missing);
    EXPECT_EQ(failureOf([] { playKeys(1, {}, {}); }), missing);
}

TEST_F(X11ScreenTest, AWindowThatHasGoneIsAnEmptyAnswer)
{
    const TestScreen server;
    show(server);
    const X11Screen screen;
    constexpr Window gone = 0x7FFFFF;
    EXPECT_TRUE(screen.numbers(gone, "_NET_WM_PID", AnyPropertyType).empty());
    EXPECT_EQ(screen.text(gone, "WM_CLIENT_MACHINE"), "");
    screen.send(gone, gone, "WM_PROTOCOLS", {1, 2}, NoEventMask);
    EXPECT_EQ(screen.number(screen.root(), "_NET_ACTIVE_WINDOW", AnyPropertyType), 0U);
    EXPECT_NO_THROW(screen.check());
}

TEST_F(X11ScreenTest, AServerThatGoesAwayEndsNothing)
{
    TestScreen server;
    show(server);
    const X11Screen screen;
    EXPECT_NO_THROW(screen.check());
    server.end();
    EXPECT_EQ(screen.number(screen.root(), "_NET_ACTIVE_WINDOW", AnyPropertyType), 0U);
    EXPECT_EQ(failureOf([&] { screen.check(); }), std::errc::connection_reset);
    EXPECT_EQ(failureOf([&] { screen.waitFor(std::chrono::hours(1), [] { return false; }); }),
              std::errc::connection_reset);
}

TEST_F(X11ScreenTest, WithoutAWindowManagerNoWindowIsActivated)
{
    const TestScreen server;
    show(server);
    EXPECT_EQ(failureOf([] { activateProcess(1); }), std::errc::function_not_supported);
}

TEST_F(X11ScreenTest, AServerThatTakesNoKeysIsTold)
{
    const TestScreen server({"-extension", "XTEST"});
    show(server);
    EXPECT_EQ(failureOf([] { playKeys(1, {}, {}); }), std::errc::function_not_supported);
}

}
