// Paths and texts in the form of the system's wide calls.
#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace tolvek {

// The path as a call takes it: a long one is made absolute and marked, since without
// the mark the system accepts no more than 260 units.
std::wstring widePath(const std::filesystem::path& path);

std::wstring wideText(std::string_view utf8);
std::string utf8Text(std::wstring_view wide);

}
