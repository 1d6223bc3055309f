#include "platform/system/child_program.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

// What the locked program reports about its attempts.
std::string triesOf(const std::string& state)
{
    const TempFolder folder;
    writeBytes(folder / "input", "abc");
    std::string result;
    runChild(TOLVEK_LOCKED_PROGRAM, {state, (folder / "input").string(), folder.path().string()},
             folder / "input", {}, [&](std::string_view bytes) { result += bytes; });
    return result;
}

TEST(LockDownTest, NothingCanBeOpenedOrReachedAndTheWorkGoesOn)
{
    EXPECT_EQ(triesOf("locked"), "lock: done\nmemory: done\ninput: done\nplace: done\n"
                                 "open: EPERM\ncreate: EPERM\nremove: EPERM\nopen oneself: EPERM\n"
                                 "socket: EPERM\nlocal socket: EPERM\nparent: EPERM\n"
                                 "code: EPERM\nprocess: EPERM\nprogram: EPERM\n");
}

// Otherwise the test above would prove nothing.
TEST(LockDownTest, WithoutTheLockAllOfItCanBeDone)
{
    EXPECT_EQ(triesOf("free"), "memory: done\ninput: done\nplace: done\nopen: done\n"
                               "create: done\nremove: done\nopen oneself: done\nsocket: done\n"
                               "local socket: done\nparent: done\ncode: done\nprocess: done\n");
}

}
}
