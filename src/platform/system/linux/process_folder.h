// Reads the system's process folder.
#pragma once
#include "platform/system/process_list.h"

namespace tolvek {

// The processes below that folder (/proc, or a test's own) whose program path this
// user can read. Processes may end during the call.
std::vector<RunningProgram> runningProgramsIn(const std::filesystem::path& processFolder);

// The process and all its descendants.
std::vector<std::int32_t> processFamily(std::int32_t processId,
                                        const std::filesystem::path& processFolder);

}
