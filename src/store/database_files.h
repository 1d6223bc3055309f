// Finds, removes, renames and replaces whole database files.
//
// A journal that an interrupted run left beside a database belongs to exactly that
// file. It is moved or removed together with it; otherwise the engine would roll it
// back into the next file of the same name. A file that another program has open
// isn't moved or removed: error 3356 after some seconds. Failures are RuntimeError
// with the platform's numbers.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// If `path` is a symbolic link, its final target, which needn't exist; otherwise
// `path` itself. Side files are placed beside the real file, which may be on another
// disk than the link.
Text linkedDatabase(const Text& path);
// Tolvek.Mdb in the program's folder, with a link resolved as above.
Text liveDatabasePath();

bool databaseExists(const Text& path);
// `wanted`, or with the first number from 2 on under which nothing is yet.
Text freeDatabaseName(const Text& wanted);
bool isReadOnlyDatabase(const Text& path);
// `to` gets the permissions and the owner of `from`.
void keepMode(const Text& from, const Text& to);
// Error 53 when the file is missing.
void removeDatabase(const Text& path);
// As the classic platform's Name statement: error 58 when the target exists, 53 when
// the source is missing.
void renameDatabase(const Text& from, const Text& to);
// Atomic: if there was a file at `to`, there is a complete one at every moment. The
// new file gets the permissions and the owner of the old one.
void replaceDatabase(const Text& from, const Text& to);
// Gives the file a second name (a hard link). False where the file system has no
// hard links. Error 58 when the target exists, 53 when the source is missing.
bool linkDatabase(const Text& existing, const Text& added);
// Flushes the folder of the file, so that its names survive a power cut.
void flushFolderOf(const Text& path);

}
