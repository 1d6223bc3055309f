#include "platform/system/process_list.h"

#include "platform/system/test_hooks.h"

#include <cstring>
#include <map>
#include <system_error>
#include <utility>

namespace tolvek {

namespace {

struct Snapshot {
    std::vector<RunningProgram> programs;
    std::size_t next = 0;
};

std::map<SnapshotHandle, Snapshot>& openSnapshots()
{
    static std::map<SnapshotHandle, Snapshot> snapshots;
    return snapshots;
}

std::function<std::vector<RunningProgram>()>& listerOfTests()
{
    static std::function<std::vector<RunningProgram>()> lister;
    return lister;
}

bool fits(const std::string& path)
{
    return path.size() < sizeof PROCESSENTRY32::szExeFile;
}

void fill(PROCESSENTRY32& entry, const RunningProgram& running, const std::string& path)
{
    entry.th32ProcessID = static_cast<std::uint32_t>(running.processId);
    std::memset(entry.szExeFile, 0, sizeof entry.szExeFile);
    path.copy(entry.szExeFile, path.size());
}

}

SnapshotHandle CreateToolhelp32Snapshot(std::uint32_t flags, std::uint32_t processId)
{
    if (flags != TH32CS_SNAPPROCESS || processId != 0) return kNoSnapshot;
    static SnapshotHandle lastHandle = 0;
    try {
        Snapshot taken{listerOfTests() ? listerOfTests()() : runningPrograms()};
        openSnapshots()[++lastHandle] = std::move(taken);
        return lastHandle;
    } catch (const std::system_error&) {
        return kNoSnapshot; // how the call reports a failure
    }
}

bool Process32First(SnapshotHandle snapshot, PROCESSENTRY32& entry)
{
    const auto open = openSnapshots().find(snapshot);
    if (open != openSnapshots().end()) open->second.next = 0;
    // This also fails for a handle that isn't open.
    return Process32Next(snapshot, entry);
}

bool Process32Next(SnapshotHandle snapshot, PROCESSENTRY32& entry)
{
    const auto open = openSnapshots().find(snapshot);
    if (open == openSnapshots().end() || entry.dwSize != kProcessEntrySize) return false;
    auto& [programs, next] = open->second;
    while (next < programs.size()) {
        const RunningProgram& running = programs[next++];
        const std::string path = running.program.string();
        // A truncated path could name another program, so such an entry is omitted.
        if (!fits(path)) continue;
        fill(entry, running, path);
        return true;
    }
    return false;
}

void CloseHandle(SnapshotHandle snapshot)
{
    openSnapshots().erase(snapshot);
}

void hooks::setProcessLister(std::function<std::vector<RunningProgram>()> lister)
{
    listerOfTests() = std::move(lister);
}

}
