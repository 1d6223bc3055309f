// The processes that run, with the record of the platform's snapshot calls.
//
// szExeFile always holds the full path of the program's file, on every system:
// where the system knows a program only through a loader (an emulated one), it
// is the path on its command line, as the host has it. A program that is known
// by no path isn't listed; neither is one whose path doesn't fit.
#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

namespace tolvek {

struct PROCESSENTRY32 {
    std::uint32_t dwSize = 0; // 297, or the calls fail
    std::uint32_t th32ProcessID = 0;
    char szExeFile[260] = {}; // ended by a NUL; in the file system's own encoding
};
inline constexpr std::uint32_t kProcessEntrySize = 297;
inline constexpr std::uint32_t TH32CS_SNAPPROCESS = 2;

using SnapshotHandle = std::intptr_t;
inline constexpr SnapshotHandle kNoSnapshot = -1;

// Of all processes: the flags 2 and the id 0. Whatever fails is kNoSnapshot, and
// calls with a handle that isn't open fail.
SnapshotHandle CreateToolhelp32Snapshot(std::uint32_t flags, std::uint32_t processId);
bool Process32First(SnapshotHandle snapshot, PROCESSENTRY32& entry);
bool Process32Next(SnapshotHandle snapshot, PROCESSENTRY32& entry);
void CloseHandle(SnapshotHandle snapshot);

struct RunningProgram {
    std::int32_t processId = 0;
    std::filesystem::path program;
};
// What a snapshot is taken of; std::system_error where the system doesn't tell.
std::vector<RunningProgram> runningPrograms();
// Tests: the lister takes the system's place, and may throw std::system_error.
// An empty one gives it back.
void setProcessLister(std::function<std::vector<RunningProgram>()> lister);

}
