// Imports PostPet's friend book into the friend table. Known friends stay unchanged,
// whatever the book says; unknown ones are added.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Has the converter library write PostPet's friend book to Friend.Tmp and, if it
// counted any friends, imports the file by tmpFriend. Reports its own failures; a read
// of mail goes on afterwards.
void edFriend();

// Adds every friend in the file whose address isn't in the table yet, each in its own
// transaction. Does nothing if the file is missing. `path` may come from a record and
// ends at its NUL. A failure is reported and ends the reading at that record; the
// friends before it are kept. True when the end of the file was reached (also of an
// empty one), false after a failure or without a file.
bool tmpFriend(const Text& path);

// With toCode, converts a kind of pet to PostPet's code, "0" for any other text.
// Otherwise converts a code to its kind, "" for any other text. There is no code "5".
void edPetKind(Int16 toCode, const Text& source, Text& result);

}
