// Friend.Tmp carries the friend editor's book back into the table. A second copy of it
// makes this safe.
//
// The editor writes the whole book to Friend.Tmp, empties the table, and has the file
// imported again. In between, the book exists only in that file, which the converter
// library may overwrite and an orderly exit deletes. A flushed copy under a name of its
// own therefore exists from before the table is emptied until the file has been
// imported completely, and the next start completes what was cut off. After a kill at
// any moment the table ends up with the old book or the whole new one.
//
//     Friend.Book       the table may not have been emptied yet: the next start empties
//                       it (again) and imports the copy
//     Friend.Book.Read  the table was emptied and is being filled: missing friends are
//                       added, and friends added since stay
//     Friend.Book.Kept  a copy that was never imported completely, put aside by a later
//                       edit; nothing reads it
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

Text friendTmpPath(); // Friend.Tmp beside the program

// Creates Friend.Tmp and calls `writeRecords` with its file number. The file is closed
// in every case; failures propagate.
void writeFriendTmp(const std::function<void(Int16)>& writeRecords);
// Makes a text safe for a record: trimmed, without the end-of-file character, and with
// every double quote, which would end the field, replaced by ’.
Text friendFileText(TextView text);

// Empties the table after Friend.Tmp and its copy have been flushed to disk. Failures
// propagate: then either the old book is still there and the copy is gone, or the table
// is empty and the copy exists. A backup on display gets no copy: the next start only
// knows the live database.
void emptyFriendTable();

// Imports Friend.Tmp by tmpFriend. If that reached the end and the copy has the same
// contents, the copy is removed.
void readFriendTmp();

// Called at a start, before anything can overwrite Friend.Tmp. If a copy exists,
// completes what was cut off, and removes the copy if that succeeded. Failures
// propagate, except those that tmpFriend reports.
void completeFriendEdit();

}
