// PostPet's friend book into the friend table: what is known already stays as
// it is, whatever the book says; what isn't is added.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Has the converter library write PostPet's friend book into Friend.Tmp, and
// reads that in by tmpFriend when the library counted any. Reports its own
// failures; a read of mail goes on behind one.
void edFriend();

// Adds every friend of the file whose address isn't in the table yet, each in a
// transaction of its own; nothing without the file. A path that comes from a
// record is taken up to its NUL. A failure is reported and ends the reading at
// that record, with the friends before it kept. True when it got to the end of
// the file (also of an empty one), false after a failure or without a file.
bool tmpFriend(const Text& path);

}
