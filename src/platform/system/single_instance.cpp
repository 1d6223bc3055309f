#include "platform/system/process.h"

#include <algorithm>

namespace tolvek {

namespace fs = std::filesystem;

SingleInstance::SingleInstance(const std::string& name, const fs::path& home,
                               const fs::path& archive)
{
    takeForUser(name);
    take(home / lockName(name));
    if (!archive.empty()) take(fs::path(archive).replace_extension(".lock"));
}

std::string SingleInstance::lockName(std::string name)
{
    for (char& character : name)
        character = character == '/' ? '_' : character;
    return name + ".lock";
}

// A second lock of one file would be refused because of the first.
void SingleInstance::take(const fs::path& file)
{
    std::error_code none;
    for (const fs::path& taken : files_)
        if (fs::equivalent(taken, file, none)) return;
    files_.push_back(file);
    locks_.emplace_back(file);
}

bool SingleInstance::isFirst() const
{
    return !isTakenForUser_ && std::ranges::none_of(locks_, &FileLock::isHeldElsewhere);
}

}
