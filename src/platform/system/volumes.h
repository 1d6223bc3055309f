// Where a user's folders begin on a system without drive letters.
#pragma once
#include <string>
#include <vector>

namespace tolvek {

// The root first, then the user's home, drive C of the user's Windows environment
// if there is one, and the other mounted volumes by name, each once. UTF-8, without
// a trailing separator except for the root.
std::vector<std::string> volumeFolders();

}
