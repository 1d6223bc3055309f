// The six text files as data: what each holds of its table, in which order, and
// under which names its two routines ask and report.
#pragma once
#include "platform/dao/dao.h"

#include <vector>

namespace tolvek {

enum class DumpColumn {
    Characters,   // as text, whatever the field's type
    BlankAsEmpty, // the same, but nothing of a text of blanks alone
    Integer16,
    Integer32,
    NumberedByTen, // not the field but 10, 20, 30, in 16 bits
    CountedFrom0,  // not the field but the row's place
};

struct TextDump {
    TextView file;
    Statement sorted; // the rows that an unload writes
    Statement clear;  // what a load begins with
    Statement all;    // the rows that a load adds to
    std::vector<DumpColumn> columns;
    TextView unLoad, unLoadTitle; // the routine, and the title of its question
    TextView load, loadTitle;
};

const TextDump& tblTolvekDump();
const TextDump& tblSearch_AddressesDump();
const TextDump& tblSearch_NameDump();
const TextDump& tblFriendDump();
const TextDump& tblFilterDump();
const TextDump& tblFilterDataDump();

}
