#include "letters/archive_stamps.h"

#include "platform/system/files.h"
#include "platform/system/private_folder.h"

#include <system_error>

namespace tolvek {

Stamps stampsOf(const std::filesystem::path& path)
{
    Stamps stamps;
    for (const char* suffix : {"", "-wal"}) {
        const std::filesystem::path file = path.string() + suffix;
        try {
            if (fileExists(file)) stamps.push_back(fileStamp(file));
        } catch (const std::system_error&) {
            // Gone at this moment; reading it reports more.
        }
    }
    return stamps;
}

bool isLarge(const std::vector<Stamps>& files, std::uint64_t mostInMemory)
{
    std::uint64_t size = 0;
    for (const Stamps& stamps : files)
        if (!stamps.empty()) size += stamps.front().size;
    return size > mostInMemory;
}

std::filesystem::path letterCacheFolder()
{
    const std::filesystem::path folder = userCacheFolder();
    return folder.empty() ? folder : folder / "TolvekLetters";
}

}
