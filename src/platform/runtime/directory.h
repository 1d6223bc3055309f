// Dir, Kill, Name, GetAttr and FileCopy of the Basic platform.
//
// Patterns (* and ?) stand in the last component only; wildcard characters in
// the folder's own name are literal. Extensions match in any case. Files only.
#pragma once
#include "platform/runtime/text.h"

#include <vector>

namespace tolvek {

// The first name that fits, without its folder; "" for none (also for a
// missing folder, and for an empty pattern).
Text dir(TextView pattern);
// All names that fit, in the order of the code units.
std::vector<Text> dirAll(TextView pattern);

// Deletes every file that fits. None: error 53. A failing one: 70 or 75, and
// the rest stays.
void kill(TextView pattern);

// Name a As b. Target present 58 (also where the system would replace it
// silently), source missing 53.
void rename(TextView from, TextView to);

// The attributes of a file or a folder, of which the program asks one: that it
// is a folder. Nothing there: error 53, or 76 when the folder above isn't there
// either; what can't be looked at: 75 or what else the system's failure is.
inline constexpr int vbDirectory = 16;
int getAttr(TextView path);

// Contents and a flush; false on any failure (the platform call's own answer).
bool copyFile(TextView from, TextView to, bool failIfExists);

}
