// Reads the letters of one archive file through the store.
//
// For one thread at a time, as the database engine is.
#pragma once
#include "letters/letter_cache.h"

#include <functional>

namespace tolvek {

// Called between two stretches, when the file isn't locked; false ends the reading.
using ReadPause = std::function<bool()>;

// Null if `pause` ended it. With a cache, the letters are taken from there or put there;
// a cache that can't be written is done without. Errors as those of RowReader (3356: it
// is being written, try again).
std::shared_ptr<const LetterFile> readLetterFile(const std::filesystem::path& archive,
                                                 const LetterCache* cache = nullptr,
                                                 const ReadPause& pause = {});

}
