// The system's list of processes.
#pragma once
#include <cstdint>
#include <vector>

namespace tolvek {

struct ProcessEntry {
    std::int32_t processId = 0;
    std::int32_t parentId = 0;
};

// Throws std::system_error if the system doesn't list its processes.
std::vector<ProcessEntry> processEntries();

// The process and all its descendants.
std::vector<std::int32_t> processFamily(std::int32_t processId);

}
