// From the texts of the program to names of the file system and back.
//
// The "\" of the settings and of quoted names is the system's own separator,
// put in by joinPath alone. A name that isn't there is looked for once more
// without regard to case and to composed or decomposed kana.
#pragma once
#include "platform/runtime/text.h"

#include <filesystem>

namespace tolvek {

using Path = std::filesystem::path;

Text joinPath(TextView folder, TextView name); // no double separator
Path nativePath(TextView path);                // as written
// The existing file or folder that the text means: exact first, then each
// component in turn by case and kana folding. Nothing there: as written.
Path existingPath(TextView path);
// Where a file of that name is to be made: the existing one that the text means,
// or else the name as written in the folder that the text means.
Path targetPath(TextView path);
Text pathText(const Path& path);

// The folder of the executable, without a separator at its end. Set once by
// main; tests set their own.
const Text& appPath();
void setAppPath(TextView folder);

}
