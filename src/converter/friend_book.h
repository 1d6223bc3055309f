// The friend book of a folder into Friend.Tmp.
//
// How the mail program lays out its own book isn't known, and what isn't known
// isn't guessed. What is recognised in the folder are files that the user, or
// another address book, puts there: vCards (*.vcf) and comma-delimited texts
// (*.csv). Whatever is broken costs the card, the record or at most the file.
#pragma once
#include "converter/conversion.h"

#include <filesystem>

namespace tolvek {

// Files in the order of their names, friends in the order of a file; of
// several with one address the first. Count: the friends written. Without one
// nothing is written, and an older file stays. A file that can't be read, is
// too large or would bring the book beyond what the count can tell is left out
// as a whole: Incomplete, with the count of the others. Never throws
// std::system_error; that is Failed.
Conversion convertFriendBook(const std::filesystem::path& folder,
                             const std::filesystem::path& tempFile);

}
