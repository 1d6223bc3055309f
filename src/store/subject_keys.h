// The row table of the subject list: which row shows which mail.
//
// The table is only as valid as the list on the screen. The next fill overwrites it
// from the top; it is never cleared.
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
// The number of rows filled so far in each block.
extern Int16 gSubjectKeyCnt1, gSubjectKeyCnt2, gSubjectKeyCnt3, gSubjectKeyCnt4;
// The number of rows in the list on display.
extern Int16 gSubjectCount;

// The entry of a row (from 0). Error 9 for a row outside the table, such as -1.
SubjectKey& SubjectRowLocate(Int16 row);

// Sets the four fill counts to 0.
void startSubjectKeys();
// Adds the key to the first block that isn't full. False when the last block is full
// after that. Kept quirk: for blocks 2 to 4 the direction flag is stored in block 1, in
// the entry of the same index, so the flag is reliable only while block 1 suffices.
bool addSubjectKey(const SubjectKey& key);

// Appends the condition for the row's mail to the select. The condition includes the
// names, which aren't part of the key: a mail whose names have changed since the list
// was filled isn't found.
Statement ofRow(Statement select, const SubjectKey& key);

}
