// Whole database files: looked for, removed, put in each other's place.
//
// A journal that an interrupted run left beside a database belongs to that
// very file: it goes with it, or the engine would play it into the next file
// of the same name. A file that another program has at work isn't moved or removed:
// 3356 after some seconds. Failures are RuntimeError with the platform's numbers.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Where the link of that name leads, also when nothing is there; any other path as
// it is. What belongs to an archive lies beside the file itself, which may be on
// another disk than the link.
Text linkedDatabase(const Text& path);
// Tolvek.Mdb in the program's folder, by the above.
Text liveDatabasePath();

bool databaseExists(const Text& path);
bool isReadOnlyDatabase(const Text& path);
// `to` gets the permissions and the owner of `from`.
void keepMode(const Text& from, const Text& to);
// A missing file: 53.
void removeDatabase(const Text& path);
// As the platform's Name: target present 58, source missing 53.
void renameDatabase(const Text& from, const Text& to);
// Atomic: at every moment a whole file is there as `to` if one was there. The new
// one gets the permissions and the owner of the old.
void replaceDatabase(const Text& from, const Text& to);
// A second name for the same file; false where the file system knows no such
// thing. Target present 58, source missing 53.
bool linkDatabase(const Text& existing, const Text& added);
// Forces the names in the file's folder to the disk.
void flushFolderOf(const Text& path);

}
