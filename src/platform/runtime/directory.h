// Dir, Kill, Name, GetAttr and FileCopy of the classic platform.
//
// Wildcards (* and ?) are allowed in the last component only; wildcard characters
// in the folder's name are literal. Names, with their extensions, match without
// regard to case. Only files are matched.
#pragma once
#include "platform/runtime/text.h"

#include <vector>

namespace tolvek {

// The first matching name, without its folder. Empty if there is none, the folder
// is missing or the pattern is empty.
Text dir(TextView pattern);
// All matching names, ordered by code units.
std::vector<Text> dirAll(TextView pattern);

// Deletes every matching file. Error 53 if there is none. A file that can't be
// deleted is error 70 or 75; the remaining files are kept.
void kill(TextView pattern);

// Name a As b. Error 58 if the target exists (also where the system would replace
// it silently), 53 if the source is missing.
void rename(TextView from, TextView to);

// The attributes of a file or folder. The program asks only for vbDirectory. If
// nothing is there, error 53, or 76 if the parent folder is missing too. Other
// failures: 75 or the number for the system's error code.
inline constexpr int vbDirectory = 16;
int getAttr(TextView path);

// Copies and flushes the contents. Returns false on any failure, as the classic
// platform's call does.
bool copyFile(TextView from, TextView to, bool failIfExists);

}
