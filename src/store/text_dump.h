// The store as text files beside the program, out and back in, a table a file.
//
// Code page 932, texts in double quotes (one inside a text stands as it is, and
// breaks its record when it is read back), CR LF, no heading. A character that
// the code page can't hold is written as 〓, and so is U+001A, whose byte would
// end the file for the load. An unload never alters the database and forces its
// file to the disk, in its place or beside it (text_dump_set.h); a load replaces
// the table's content, and a table whose file isn't there keeps what it has.
// Records are streamed one at a time, with a yield at each.
//
// Every routine opens and closes gDb and its file and reports its own failures:
// a missing database may be created on asking, anything else ends the routine
// with the file closed as far as it was written.
//
// Two columns are renumbered by an unload: tblFilter's first as 10, 20, 30 in
// sort order, tblFilterData's first from 0.
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

// True when one of the six files is there: the loads would replace something.
bool hasTextFiles();

// The rules are loaded into the memory of the filters too, which this layer
// doesn't know: tblFilter_Load (filter/filter_load.h) is made of this.
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
