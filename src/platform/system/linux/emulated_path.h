// Paths of programs that run under the Windows emulation layer.
#pragma once
#include <filesystem>
#include <optional>
#include <string_view>

namespace tolvek {

// "C:\Program Files\x.exe", also with "/" or a "\\?\" or "\??\" before it.
bool isDrivePath(std::string_view path);

// Such a path as the host has it. The drives are the links "c:", "z:" in the
// folder dosdevices of the environment's folder; of the names below them the
// case doesn't count where none is there as written. Nothing for a drive that
// isn't there and for a path without one; what is missing further down stays as
// it is written.
std::optional<std::filesystem::path> hostPath(std::string_view path,
                                              const std::filesystem::path& environment);

}
