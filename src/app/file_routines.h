// File routines with the semantics of the classic platform's Dir and of two of its
// system calls.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>
#include <vector>

namespace tolvek {

// `path` may hold wildcards in its file name. -1 when a file matches, else 0.
Int16 FileNameCheck(const Text& path);

// Names of the files in `folder` with the extension (in any case), sorted descending by
// code unit. Stops after `limit` + 1 names.
void FileNameGet(const Text& folder, const Text& extension, std::int32_t limit,
                 std::vector<Text>& list, std::int32_t& count);

// The classic platform's Windows folder; empty where there is none.
Text GetWinDir();
// Returns 1 when the file was copied, else 0.
std::int32_t CopyFileA(const Text& source, const Text& target, std::int32_t failIfExists);

}
