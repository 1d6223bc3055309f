#include "help/help_pack.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

const HelpItems kItems{{"index.html", "<h1>目次</h1>"}, {"a.png", QByteArray("\0\1\2", 3)}};

TEST(HelpPackTest, WhatIsPackedComesOutAgain)
{
    EXPECT_EQ(unpackedHelp(packedHelp(kItems)), kItems);
}

TEST(HelpPackTest, EveryChangedByteIsNoticed)
{
    const QByteArray whole = packedHelp(kItems);
    for (qsizetype at = 0; at < whole.size(); ++at) {
        QByteArray changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ 0x10);
        EXPECT_FALSE(unpackedHelp(changed)) << at;
    }
}

TEST(HelpPackTest, AFileThatIsCutOffIsNoHelpFile)
{
    const QByteArray whole = packedHelp(kItems);
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(unpackedHelp(whole.left(size))) << size;
}

TEST(HelpPackTest, TheSameManualGivesTheSameBytes)
{
    EXPECT_EQ(packedHelp(kItems), packedHelp(kItems));
}

}
}
