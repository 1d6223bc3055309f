// Where a user's folders begin, on a system that has no drive letters.
#pragma once
#include <string>
#include <vector>

namespace tolvek {

// The root first, then the user's home, the drive C of a Windows environment
// that the user has set up, and the other mounted volumes by name; each once.
// UTF-8, without a separator at the end but for the root.
std::vector<std::string> volumeFolders();
// Tests: these alone. None: the system's own again.
void setVolumeFolders(std::vector<std::string> folders);

}
