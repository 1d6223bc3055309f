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
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

Text friendTmpPath(); // Friend.Tmp beside the program

// Called with Friend.Tmp written and closed, before the table is emptied:
// Friend.Tmp and its copy are on the disk when it returns. The copy counts as
// "table not yet emptied" until markFriendTableEmptied.
void keepFriendCopy();
// Called once the emptying is committed.
void markFriendTableEmptied();
// The table couldn't be emptied: it holds the old book, and the copy goes.
void dropFriendCopy();

// Reads Friend.Tmp in by tmpFriend; when that got to the end, the copy goes.
void readFriendTmp();

// At a start, before anything can write over Friend.Tmp: where a copy stands,
// completes what was cut off, and removes the copy when that got to its end.
// Without a copy nothing happens. Failures go to the caller (tmpFriend reports
// its own).
void completeFriendEdit();

}
