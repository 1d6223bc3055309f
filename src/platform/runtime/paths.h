// Converts between the program's texts and file system names.
//
// joinPath is the only function that adds a separator. It uses the system's own
// separator where the settings and quoted names have "\". A name that doesn't exist
// is searched for once more, ignoring case and the difference between composed and
// decomposed kana.
#pragma once
#include "platform/runtime/text.h"

#include <filesystem>

namespace tolvek {

using Path = std::filesystem::path;

Text joinPath(TextView folder, TextView name); // never doubles the separator
Path nativePath(TextView path);                // no search
// The existing file or folder that the text refers to: an exact match first,
// otherwise each component in turn by case and kana folding. Returned as written if
// nothing matches.
Path existingPath(TextView path);
// The path at which to make a file: the existing file that the text refers to,
// otherwise the name as written in the folder that the text refers to.
Path targetPath(TextView path);
Text pathText(const Path& path);

// The folder of the executable, without a trailing separator. Set once by main;
// tests set their own.
const Text& appPath();
void setAppPath(TextView folder);

}
