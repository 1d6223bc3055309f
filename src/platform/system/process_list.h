// Lists the running processes in the record format of the classic platform's
// snapshot calls.
//
// szExeFile always holds the full path of the program's file, on every system. If
// the system shows only a loader (for an emulated program), it is the path on the
// command line, converted to a host path. A program whose path is unknown or
// doesn't fit isn't listed.
#pragma once
#include <cstdint>
#include <filesystem>
#include <vector>

namespace tolvek {

struct PROCESSENTRY32 {
    std::uint32_t dwSize = 0; // must be 297, otherwise the calls fail
    std::uint32_t th32ProcessID = 0;
    char szExeFile[260] = {}; // NUL-terminated, in the file system's encoding
};
inline constexpr std::uint32_t kProcessEntrySize = 297;
inline constexpr std::uint32_t TH32CS_SNAPPROCESS = 2;

using SnapshotHandle = std::intptr_t;
inline constexpr SnapshotHandle kNoSnapshot = -1;

// Only snapshots of all processes: flags 2 and id 0. Any failure returns
// kNoSnapshot; calls with a handle that isn't open fail.
SnapshotHandle CreateToolhelp32Snapshot(std::uint32_t flags, std::uint32_t processId);
bool Process32First(SnapshotHandle snapshot, PROCESSENTRY32& entry);
bool Process32Next(SnapshotHandle snapshot, PROCESSENTRY32& entry);
void CloseHandle(SnapshotHandle snapshot);

struct RunningProgram {
    std::int32_t processId = 0;
    std::filesystem::path program;
};
// The contents of a snapshot. Throws std::system_error if the system doesn't list
// its processes.
std::vector<RunningProgram> runningPrograms();

}
