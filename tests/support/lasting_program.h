// A program that only keeps running, under any path that a test needs.
#pragma once
#include "platform/system/process.h"
#include "platform/system/process_list.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace tolvek::test {

// The processes of that program, in the system's order.
inline std::vector<std::int32_t> processesOf(const std::filesystem::path& program)
{
    std::vector<std::int32_t> ids;
    PROCESSENTRY32 entry;
    entry.dwSize = kProcessEntrySize;
    const SnapshotHandle snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    for (bool more = Process32First(snapshot, entry); more; more = Process32Next(snapshot, entry))
        if (entry.szExeFile == program.string())
            ids.push_back(static_cast<std::int32_t>(entry.th32ProcessID));
    CloseHandle(snapshot);
    return ids;
}

// Waits for a condition that another process will fulfil, as long as a slow machine may
// need. False when it never became true.
template <class Condition> bool comesTrue(const Condition& condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

class LastingProgram {
public:
    explicit LastingProgram(const std::filesystem::path& program)
    {
        namespace fs = std::filesystem;
        fs::create_directories(program.parent_path());
        fs::copy_file("/bin/sleep", program, fs::copy_options::skip_existing);
        const std::size_t before = processesOf(program).size();
        id_ = startProgram(program, {"600"});
        EXPECT_TRUE(comesTrue([&] { return processesOf(program).size() > before; }));
    }
    ~LastingProgram() { kill(id_, SIGKILL); }
    LastingProgram(const LastingProgram&) = delete;
    LastingProgram& operator=(const LastingProgram&) = delete;

    std::int32_t id() const { return id_; }

private:
    std::int32_t id_ = 0;
};

}
