// The system's table of mounts, as far as it names volumes.
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

// The folders of the volumes that hold files of users, sorted; not the root's.
// Of a volume that is mounted more than once the first place counts, and what
// the system mounts for itself (its own file systems, packed programs, single
// files and folders shown in a second place) is none.
std::vector<std::string> mountedVolumes(std::string_view mountInfo);

}
