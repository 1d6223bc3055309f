#include "letters/window/letters_program.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(LettersProgram, ShowsItsWindowUnlessACommandIsGiven)
{
    EXPECT_TRUE(wantsWindow({}));
    EXPECT_TRUE(wantsWindow({"/some/folder", "Tolvek.Mdb"}));
    EXPECT_TRUE(wantsWindow({"--person", "hana@example.jp"}));
    EXPECT_TRUE(wantsWindow({"--person", "--find"})) << "a name may look like anything";
    EXPECT_FALSE(wantsWindow({"--find", "星"}));
    EXPECT_FALSE(wantsWindow({"--help"}));
}

}
}
