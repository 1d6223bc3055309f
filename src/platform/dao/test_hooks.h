// For tests alone: other limits and another reader of Jet files. A hook stays until it is
// set again; an empty argument restores the real thing.
#pragma once
#include <chrono>
#include <filesystem>
#include <optional>

namespace tolvek::hooks {

// How long a statement waits for another program before 3356.
void setPatience(std::optional<std::chrono::milliseconds> patience);

// Another reader than the one in the program's folder, and how long it may take.
void setJetReader(std::filesystem::path program,
                  std::chrono::milliseconds patience = std::chrono::minutes(1));

}
