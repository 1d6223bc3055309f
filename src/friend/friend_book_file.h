// Friend.Tmp as the friend editor's road back into the table, and the second
// copy of it that makes this road safe.
//
// The editor writes the whole book into Friend.Tmp, empties the table and has
// the file read in again. In between the book exists in that file alone, and
// the converter library and an orderly exit may take it away. So a flushed copy
// stands under a name of its own from before the table is emptied until the
// file has been read in to its end, and the next start completes what was cut
// off: after a kill at any moment the table holds the old book or the whole new
// one.
//
//     Friend.Book       the table isn't known to be emptied: whoever finds it
//                       empties the table (again) and reads the copy in
//     Friend.Book.Read  the table is emptied and filling: what is missing is
//                       added, and what has been added since stays
//     Friend.Book.Kept  a copy that was never read in to its end, put aside by
//                       a later edit; nothing reads it
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

Text friendTmpPath(); // Friend.Tmp beside the program

// Has `writeRecords` fill a fresh Friend.Tmp, open under the file number that it
// is given. The file is closed in every case; failures go to the caller.
void writeFriendTmp(const std::function<void(Int16)>& writeRecords);
// A text of the book as a record can hold it: trimmed, without what would end
// the field (a quote, which becomes the ’ that is stored in the end) or the file.
Text friendFileText(TextView text);

// Empties the table, with Friend.Tmp and its copy on the disk before. A failure
// goes to the caller: then the old book stands and the copy is gone, or the
// table is empty and the copy stands. A backup on display has no copy: the next
// start knows the live database alone.
void emptyFriendTable();

// Reads Friend.Tmp in by tmpFriend; when that got to the end of what the copy
// holds too, the copy goes.
void readFriendTmp();

// At a start, before anything can write over Friend.Tmp: where a copy stands,
// completes what was cut off, and removes the copy when that got to its end.
// Without a copy nothing happens. Failures go to the caller (tmpFriend reports
// its own).
void completeFriendEdit();

}
