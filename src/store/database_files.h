// Whole database files: looked for, removed, put in each other's place.
//
// A journal that an interrupted run left beside a database belongs to that
// very file: it goes with it, or the engine would play it into the next file
// of the same name. A file that another program has at work isn't moved or removed:
// 3356 after some seconds. Failures are RuntimeError with the platform's numbers.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

bool databaseExists(const Text& path);
// A missing file: 53.
void removeDatabase(const Text& path);
// As the platform's Name: target present 58, source missing 53.
void renameDatabase(const Text& from, const Text& to);
// Atomic: at every moment a whole file stands under `to` if one stood there.
void replaceDatabase(const Text& from, const Text& to);
// A second name for the same file; false where the file system knows no such
// thing. Target present 58, source missing 53.
bool linkDatabase(const Text& existing, const Text& added);
// Forces the names in the file's folder to the disk.
void flushFolderOf(const Text& path);

}
