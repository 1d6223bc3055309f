#include "store/subject_keys.h"
#include "support/errors.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

SubjectKey keyNumber(int number, bool sent)
{
    SubjectKey key;
    key.YMD = decimal(number);
    key.SndRcvFlag = sent;
    return key;
}

TEST(SubjectKeysTest, ARowIsFoundInItsBlockAndEveryHigherBlockIsTheFourth)
{
    const struct {
        int row;
        SubjectBlock& block;
        int index;
    } cases[] = {{0, gSubjectKey1, 0},       {10239, gSubjectKey1, 10239},
                 {10240, gSubjectKey2, 0},   {20479, gSubjectKey2, 10239},
                 {20480, gSubjectKey3, 0},   {30720, gSubjectKey4, 0},
                 {32767, gSubjectKey4, 2047}};
    for (const auto& c : cases)
        EXPECT_EQ(&SubjectRowLocate(c.row), &c.block[c.index]) << c.row;
}

TEST(SubjectKeysTest, ARowBelowTheTableIsAnIndexOutOfBounds)
{
    EXPECT_EQ(errorOf([] { SubjectRowLocate(-1); }), 9);
}

TEST(SubjectKeysTest, ExactlyOneBlockOfRowsStaysInTheFirstBlock)
{
    startSubjectKeys();
    for (int i = 0; i < kSubjectBlock; ++i)
        EXPECT_TRUE(addSubjectKey(keyNumber(i, false)));
    EXPECT_EQ(gSubjectKeyCnt1, kSubjectBlock);
    EXPECT_EQ(gSubjectKeyCnt2, 0);
    EXPECT_EQ(SubjectRowLocate(10239).YMD, u"10239");
}

TEST(SubjectKeysTest, ARowBehindTheFirstBlockLeavesItsDirectionInTheFirstBlock)
{
    startSubjectKeys();
    gSubjectKey2[0].SndRcvFlag = false;
    for (int i = 0; i < kSubjectBlock; ++i)
        addSubjectKey(keyNumber(i, false));
    addSubjectKey(keyNumber(kSubjectBlock, true));
    EXPECT_EQ(SubjectRowLocate(10240).YMD, u"10240");
    EXPECT_FALSE(SubjectRowLocate(10240).SndRcvFlag);
    EXPECT_TRUE(SubjectRowLocate(0).SndRcvFlag);
    EXPECT_EQ(SubjectRowLocate(0).YMD, u"0");
}

TEST(SubjectKeysTest, TheLastBlockTellsWhenItIsFull)
{
    startSubjectKeys();
    for (int i = 0; i < 4 * kSubjectBlock - 1; ++i)
        ASSERT_TRUE(addSubjectKey(keyNumber(i, false))) << i;
    EXPECT_FALSE(addSubjectKey(keyNumber(4 * kSubjectBlock - 1, false)));
    EXPECT_EQ(gSubjectKey4[kSubjectBlock - 1].YMD, decimal(4 * kSubjectBlock - 1));
}

}
}
