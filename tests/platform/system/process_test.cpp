#include "platform/system/process.h"
#include "platform/system/test_hooks.h"
#include "support/child_process.h"

#include <chrono>
#include <gtest/gtest.h>

namespace tolvek::test {

TEST(ProcessTest, LeavingRunsNoExitHandler)
{
    ChildProcess child([] {
        std::atexit([] { _exit(1); });
        leaveProcess(7);
        return 0;
    });
    EXPECT_EQ(child.exitCode(), 7);
}

TEST(ProcessTest, SleepsAtLeastTheTimeAsked)
{
    const auto start = std::chrono::steady_clock::now();
    sleepMilliseconds(5);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(5));
}

TEST(ProcessTest, TheWindowsFolderIsEmptyUnlessSet)
{
    EXPECT_EQ(windowsFolder(), "");
    hooks::setWindowsFolder("/windows");
    EXPECT_EQ(windowsFolder(), "/windows");
    hooks::setWindowsFolder({});
    EXPECT_EQ(windowsFolder(), "");
}

}
