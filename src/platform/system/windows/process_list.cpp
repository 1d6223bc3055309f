#include "platform/system/process_list.h"

#include "platform/system/windows/process_tree.h"

#include "platform/system/windows/handle.h"

#include <algorithm>
#include <optional>
#include <string>

namespace tolvek {

namespace {

constexpr DWORD kLongestPath = 32768;

// Nothing if the process has ended, or runs with more rights than this one may ask about.
std::optional<std::filesystem::path> programOf(std::int32_t processId)
{
    const Handle process(
        ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(processId)));
    std::wstring name(kLongestPath, L'\0');
    DWORD size = kLongestPath;
    if (!process || !::QueryFullProcessImageNameW(process.get(), 0, name.data(), &size))
        return std::nullopt;
    return name.substr(0, size);
}

}

std::vector<RunningProgram> runningPrograms()
{
    std::vector<RunningProgram> running;
    for (const ProcessEntry& entry : processEntries())
        if (auto program = programOf(entry.processId))
            running.push_back({entry.processId, std::move(*program)});
    std::ranges::sort(running, {}, &RunningProgram::processId);
    return running;
}

}
