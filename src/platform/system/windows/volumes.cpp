#include "platform/system/volumes.h"

#include "platform/system/windows/windows_api.h"

#include <utility>

namespace tolvek {

namespace {

std::vector<std::string>& givenFolders()
{
    static std::vector<std::string> folders;
    return folders;
}

}

// Each drive's root. A drive without a medium is listed too, as everywhere on the system;
// nothing is read from it here.
std::vector<std::string> volumeFolders()
{
    if (!givenFolders().empty()) return givenFolders();
    const DWORD present = ::GetLogicalDrives();
    std::vector<std::string> folders;
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        if (present >> (letter - 'A') & 1) folders.push_back(std::string(1, letter) + ":\\");
    return folders;
}

void setVolumeFolders(std::vector<std::string> folders)
{
    givenFolders() = std::move(folders);
}

}
