// Parses the system's mount table for the volumes in it.
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

// The folders of volumes that hold user files, sorted, without the root volume. For
// a volume that is mounted several times the first mount counts. Mounts that the
// system makes for itself are omitted (virtual file systems, packed programs,
// single files and folders that are bind-mounted).
std::vector<std::string> mountedVolumes(std::string_view mountInfo);

}
