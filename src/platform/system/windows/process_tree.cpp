#include "platform/system/windows/process_tree.h"

#include "platform/system/windows/handle.h"

#include <tlhelp32.h>

#include <algorithm>

namespace tolvek {

std::vector<ProcessEntry> processEntries()
{
    const Handle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!snapshot) throwSystemError(::GetLastError(), {});
    std::vector<ProcessEntry> entries;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32FirstW(snapshot.get(), &entry); more;
         more = ::Process32NextW(snapshot.get(), &entry))
        entries.push_back({static_cast<std::int32_t>(entry.th32ProcessID),
                           static_cast<std::int32_t>(entry.th32ParentProcessID)});
    return entries;
}

std::vector<std::int32_t> processFamily(std::int32_t processId)
{
    const std::vector<ProcessEntry> all = processEntries();
    std::vector<std::int32_t> family{processId};
    for (std::size_t at = 0; at < family.size(); ++at)
        for (const ProcessEntry& entry : all)
            // A parent's id may have been given to another process since, so there may be
            // a cycle.
            if (entry.parentId == family[at] &&
                std::ranges::find(family, entry.processId) == family.end())
                family.push_back(entry.processId);
    return family;
}

}
