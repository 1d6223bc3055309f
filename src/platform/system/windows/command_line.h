// A program's arguments as the one text that the system passes on.
#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace tolvek {

// Quoted so that the program's own library divides it again into the same arguments.
std::wstring commandLine(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments);

}
