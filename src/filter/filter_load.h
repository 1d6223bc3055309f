// The rules back from their text file, into the table and into memory.
#pragma once

namespace tolvek {

// As the other loads of store/text_dump.h. The rules in memory are emptied
// first (entry 255 and gNonCopyRule are left as they stand); a record beyond
// the 256th is error 9, before its row is stored.
void tblFilter_Load();

}
