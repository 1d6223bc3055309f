#include "platform/system/windows/command_line.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(CommandLineTest, ArgumentsAreQuotedAsProgramsReadThem)
{
    const std::filesystem::path program = LR"(C:\Program Files\x.exe)";
    EXPECT_EQ(commandLine(program, {}), LR"("C:\Program Files\x.exe")");
    EXPECT_EQ(commandLine(program, {"a", "b c", ""}), LR"("C:\Program Files\x.exe" a "b c" "")");
    EXPECT_EQ(commandLine("x", {"say \"hi\""}), LR"("x" "say \"hi\"")");
    EXPECT_EQ(commandLine("x", {"C:\\a b\\"}), LR"("x" "C:\a b\\")");
    EXPECT_EQ(commandLine("x", {"C:\\a\\\"b"}), LR"("x" "C:\a\\\"b")");
}

}
}
