// The row table of the subject list: which mail stands behind which row.
//
// The table is only as valid as the list on the screen; it is overwritten from
// the top at the next fill and never cleared.
#pragma once
#include "platform/dao/statement.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

struct SubjectKey {
    Text YMD, HMS;
    Int16 SubKey;
    bool SndRcvFlag = false;
    Text SndName, SndAdd, RcvName, RcvAdd;
};

inline constexpr int kSubjectBlock = 10240;
using SubjectBlock = CheckedArray<SubjectKey, kSubjectBlock + 2>;

extern SubjectBlock gSubjectKey1, gSubjectKey2, gSubjectKey3, gSubjectKey4;
// Rows of each block filled so far in the fill in progress.
extern Int16 gSubjectKeyCnt1, gSubjectKeyCnt2, gSubjectKeyCnt3, gSubjectKeyCnt4;
// Rows of the list now shown.
extern Int16 gSubjectCount;

// The entry of a row (from 0). A row outside the table, -1 among them: error 9.
SubjectKey& SubjectRowLocate(Int16 row);

// Sets the four fill counts to 0.
void startSubjectKeys();
// Puts the key into the first block with room. False when the last block is
// full with it. A row of the blocks 2 to 4 leaves its direction flag in the
// entry of the same index of block 1; readers of the flag rely on nothing more.
bool addSubjectKey(const SubjectKey& key);

// The select with the condition of a row's mail behind it. Names stand in it too,
// though they aren't part of the key: a mail whose name was set anew since the
// list was filled is not found.
Statement ofRow(Statement select, const SubjectKey& key);

}
