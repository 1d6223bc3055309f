// Paths of programs that run under the Windows emulation layer.
#pragma once
#include <filesystem>
#include <optional>
#include <string_view>

namespace tolvek {

// True for "C:\Program Files\x.exe", also with "/" and with the prefixes "\\?\" and
// "\??\".
bool isDrivePath(std::string_view path);

// Converts such a path to a host path. The drives are the links "c:", "z:" and so
// on in the folder "dosdevices" of `environment`. Names below a drive match without
// regard to case if no exact match exists. Returns nothing for a missing drive and
// for a path without a drive; missing parts further down are kept as written.
std::optional<std::filesystem::path> hostPath(std::string_view path,
                                              const std::filesystem::path& environment);

}
