// Writes the store to text files in the program's folder and loads them again, one
// file per table.
//
// The files are in code page 932 with CR LF and no header line. Texts are in double
// quotes; a quote inside a text isn't escaped and breaks its record when it is loaded.
// A character that the code page lacks is written as 〓, and so is U+001A, whose byte
// would end the file for the load. An unload never changes the database. It flushes
// its file, which it writes in its place or beside it (text_dump_set.h). A load
// replaces the rows of the table; a table whose file is missing stays unchanged.
// Records are processed one at a time, with a yield after each.
//
// Every routine opens and closes gDb and its file and reports its own failures. If the
// database is missing, the user is asked whether to create it. Any other failure ends
// the routine; what was written of the file until then stays.
//
// An unload renumbers two columns: the first of tblFilter as 10, 20, 30 in sort order,
// the first of tblFilterData from 0.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

void tblTolvek_UnLoad();
void tblSearch_Addresses_UnLoad();
void tblSearch_Name_UnLoad();
void tblFriend_UnLoad();
void tblFilter_UnLoad();
void tblFilterData_UnLoad();

void tblTolvek_Load();
void tblSearch_Addresses_Load();
void tblSearch_Name_Load();
void tblFriend_Load();
void tblFilterData_Load();

// Whether at least one of the six files exists, so that the loads would replace rows.
bool hasTextFiles();

// The rules are also loaded into the filters' memory, which this layer can't access.
// tblFilter_Load (filter/filter_rules.h) is built on this.
struct FilterRecord {
    Int16 no = 0, termsCode = 0, actionCode = 0;
    Text header, data;
};
struct FilterRecords {
    std::function<void()> reset;                    // before the first record
    std::function<void(const FilterRecord&)> taken; // before its row is stored; may throw
};
void loadFilterTable(const FilterRecords& memory);

}
