// Files by name, as the platform's Dir and two of the system's calls know them.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>
#include <vector>

namespace tolvek {

// -1 when the file exists, else 0.
Int16 FileNameCheck(const Text& path);

// Names in `folder` with the extension, sorted descending by code unit.
void FileNameGet(const Text& folder, const Text& extension, std::int32_t limit,
                 std::vector<Text>& list, std::int32_t& count);

Text GetWinDir();
// 1: copied; 0: not.
std::int32_t CopyFileA(const Text& source, const Text& target, std::int32_t failIfExists);

}
