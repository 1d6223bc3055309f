// Converts the friend book of a folder to Friend.Tmp.
//
// The format of the mail program's own book is unknown, and Tolvek doesn't guess. It
// recognises files that the user or another address book puts into the folder: vCards
// (*.vcf) and comma-delimited text (*.csv). A defect costs the card, the record or at
// most the file.
#pragma once
#include "converter/conversion.h"

#include <filesystem>

namespace tolvek {

// Files come in the order of their names, friends in the order of the file; of several
// with one address the first counts. Count: the friends written. If there are none,
// nothing is written and an older file is kept. A file that can't be read, is too
// large or would exceed the range of the count is left out as a whole: Incomplete,
// with the count of the others. Never throws std::system_error; that is Failed.
Conversion convertFriendBook(const std::filesystem::path& folder,
                             const std::filesystem::path& tempFile);

}
