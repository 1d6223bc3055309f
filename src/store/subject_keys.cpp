#include "store/subject_keys.h"

namespace tolvek {

SubjectBlock gSubjectKey1, gSubjectKey2, gSubjectKey3, gSubjectKey4;
Int16 gSubjectKeyCnt1, gSubjectKeyCnt2, gSubjectKeyCnt3, gSubjectKeyCnt4;
Int16 gSubjectCount;

namespace {

SubjectBlock* const kBlocks[] = {&gSubjectKey1, &gSubjectKey2, &gSubjectKey3, &gSubjectKey4};
Int16* const kCounts[] = {&gSubjectKeyCnt1, &gSubjectKeyCnt2, &gSubjectKeyCnt3, &gSubjectKeyCnt4};
constexpr int kLastBlock = 3;

// The last block if all are full.
int firstBlockWithRoom()
{
    int block = 0;
    while (block < kLastBlock && *kCounts[block] >= kSubjectBlock)
        ++block;
    return block;
}

// Kept quirk: for blocks 2 to 4 the flag is stored in the same row of block 1,
// overwriting it. The entry's own flag stays unchanged.
void storeInLaterBlock(SubjectBlock& block, int index, const SubjectKey& key)
{
    const bool own = block[index].SndRcvFlag;
    block[index] = key;
    block[index].SndRcvFlag = own;
    gSubjectKey1[index].SndRcvFlag = key.SndRcvFlag;
}

}

// A row below 0 gives a negative index, which the checked array refuses with error 9.
SubjectKey& SubjectRowLocate(Int16 row)
{
    const int index = row % kSubjectBlock;
    const int block = (row - index) / kSubjectBlock;
    return (*kBlocks[block < kLastBlock ? block : kLastBlock])[index];
}

void startSubjectKeys()
{
    for (Int16* count : kCounts)
        *count = 0;
}

bool addSubjectKey(const SubjectKey& key)
{
    const int block = firstBlockWithRoom();
    Int16& count = *kCounts[block];
    if (block == 0)
        gSubjectKey1[count] = key;
    else
        storeInLaterBlock(*kBlocks[block], count, key);
    ++count;
    return block != kLastBlock || count < kSubjectBlock;
}

// Kept quirk: the direction flag, which is part of the key, isn't in the condition.
Statement ofRow(Statement select, const SubjectKey& key)
{
    return select << u" WHERE ( tblTolvek_YMD = '" << key.YMD << u"' AND " << u"tblTolvek_HMS = '"
                  << key.HMS << u"' AND " << u"tblTolvek_SubKey = " << key.SubKey << u" AND "
                  << u"tblTolvek_SndName = '" << key.SndName << u"' AND " << u"tblTolvek_SndAdd = '"
                  << key.SndAdd << u"' AND " << u"tblTolvek_RcvName = '" << key.RcvName << u"' AND "
                  << u"tblTolvek_RcvAdd = '" << key.RcvAdd << u"' )";
}

}
