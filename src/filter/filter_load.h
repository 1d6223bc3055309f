// Loads the rules from their text dump into the table and into memory.
#pragma once

namespace tolvek {

// Like the other loads of store/text_dump.h. The rules in memory are emptied first,
// except for entry 255 and gNonCopyRule. A record beyond the 256th is error 9, before
// its row is stored.
void tblFilter_Load();

}
