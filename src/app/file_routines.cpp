#include "app/file_routines.h"

#include "app/guard.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/paths.h"
#include "platform/system/process.h"

#include <algorithm>

namespace tolvek {

namespace {

// The listing stops after `limit` + 1 names, as it always has.
void takeNames(const std::vector<Text>& found, std::int32_t limit, std::vector<Text>& list,
               std::int32_t& count)
{
    for (const Text& name : found) {
        list.push_back(name);
        if (++count > limit) return;
    }
}

}

Int16 FileNameCheck(const Text& path)
{
    ResumeNext on{u"FileNameCheck"};
    Int16 found = 0;
    on([&] { found = trim(dir(path)).empty() ? 0 : -1; });
    return found;
}

void FileNameGet(const Text& folder, const Text& extension, std::int32_t limit,
                 std::vector<Text>& list, std::int32_t& count)
{
    ResumeNext on{u"FileNameGet"};
    count = 0;
    list.clear();
    on([&] { takeNames(dirAll(joinPath(folder, u"*." + extension)), limit, list, count); });
    on([&] { std::sort(list.begin(), list.end(), std::greater<>()); });
}

// The folder is empty outside the classic platform; callers then skip the old settings
// file.
Text GetWinDir()
{
    ResumeNext on{u"GetWinDir"};
    Text folder;
    on([&] { folder = trim(cutAtNul(pathText(windowsFolder()))); });
    return folder;
}

std::int32_t CopyFileA(const Text& source, const Text& target, std::int32_t failIfExists)
{
    return copyFile(source, target, failIfExists != 0) ? 1 : 0;
}

}
