#include "platform/system/windows/wide_path.h"

#include "platform/system/windows/windows_api.h"

namespace tolvek {

namespace {

// The limit is 260, 248 for a folder; names that are added below one need some room.
constexpr std::size_t kLongest = 200;
constexpr std::wstring_view kMark = LR"(\\?\)";
constexpr std::wstring_view kNetworkMark = LR"(\\?\UNC\)";

std::wstring absoluteText(const std::wstring& path)
{
    const DWORD size = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring whole(size, L'\0');
    const DWORD written = ::GetFullPathNameW(path.c_str(), size, whole.data(), nullptr);
    if (written == 0 || written >= size) return path;
    whole.resize(written);
    return whole;
}

}

std::wstring widePath(const std::filesystem::path& path)
{
    const std::wstring& text = path.native();
    if (text.starts_with(kMark) || text.starts_with(LR"(\\.\)")) return text;
    // A short relative path may belong to a long current folder.
    if (path.is_absolute() && text.size() <= kLongest) return text;
    const std::wstring whole = absoluteText(text);
    if (whole.size() <= kLongest) return text;
    if (whole.starts_with(LR"(\\)")) return std::wstring(kNetworkMark) + whole.substr(2);
    return std::wstring(kMark) + whole;
}

std::wstring wideText(std::string_view utf8)
{
    const int given = static_cast<int>(utf8.size());
    const int size = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), given, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), given, wide.data(), size);
    return wide;
}

std::string utf8Text(std::wstring_view wide)
{
    const int given = static_cast<int>(wide.size());
    const int size =
        ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), given, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), given, utf8.data(), size, nullptr, nullptr);
    return utf8;
}

}
