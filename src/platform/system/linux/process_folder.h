// The system's folder of processes, read.
#pragma once
#include "platform/system/process_list.h"

namespace tolvek {

// Of the processes below that folder (/proc; a test has one of its own) those
// whose program's path this user can read. A process may end meanwhile.
std::vector<RunningProgram> runningProgramsIn(const std::filesystem::path& processFolder);

// The process and those that it started, with all that these have started.
std::vector<std::int32_t> processFamily(std::int32_t processId,
                                        const std::filesystem::path& processFolder);

}
