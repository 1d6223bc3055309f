// The six text files as data: columns and order of each, and the names under which its
// two routines ask and report.
#pragma once
#include "platform/dao/dao.h"

#include <vector>

namespace tolvek {

enum class DumpColumn {
    Characters,   // as text, whatever the field's type
    BlankAsEmpty, // the same, but a text of blanks only becomes empty
    Integer16,
    Integer32,
    NumberedByTen, // not the field but 10, 20, 30, in 16 bits
    CountedFrom0,  // not the field but the row's position
};

struct TextDump {
    TextView file;
    Statement sorted; // selects the rows that an unload writes
    Statement clear;  // deletes the rows before a load
    Statement all;    // opens the table to which a load adds its rows
    std::vector<DumpColumn> columns;
    TextView unLoad, unLoadTitle; // the routine's name, and the title of its question
    TextView load, loadTitle;
};

const TextDump& tblTolvekDump();
const TextDump& tblSearch_AddressesDump();
const TextDump& tblSearch_NameDump();
const TextDump& tblFriendDump();
const TextDump& tblFilterDump();
const TextDump& tblFilterDataDump();
std::vector<const TextDump*> allTextDumps();

}
