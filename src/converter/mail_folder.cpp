#include "converter/mail_folder.h"

#include "converter/ascii.h"
#include "platform/system/files.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>

namespace tolvek {

namespace {

std::filesystem::path pathOf(const std::string& utf8)
{
    return std::u8string(utf8.begin(), utf8.end());
}

bool isMessageName(const std::string& name)
{
    // Hidden files, such as other systems leave beside a copy, are no mails.
    return lowerAscii(name).ends_with(".eml") && !name.starts_with(".");
}

}

std::filesystem::path folderOfBox(const std::filesystem::path& box)
{
    if (box.filename().empty()) return {};
    if (folderExists(box)) return box;
    std::filesystem::path bare = box;
    bare.replace_extension();
    // The name in the box list has an extension that the folder may lack.
    return !entryExists(box) && folderExists(bare) ? bare : std::filesystem::path();
}

std::optional<std::vector<std::filesystem::path>> messageFiles(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    for (const std::string& name : fileNames(folder))
        if (isMessageName(name)) files.push_back(folder / pathOf(name));
    bool maildir = false;
    // Not tmp: mails there are still being delivered.
    for (const char* part : {"cur", "new"}) {
        if (!folderExists(folder / part)) continue;
        maildir = true;
        for (const std::string& name : fileNames(folder / part))
            if (!name.starts_with(".")) files.push_back(folder / part / pathOf(name));
    }
    // An empty Maildir is an empty box; another folder without mails is no box.
    if (files.empty() && !maildir) return std::nullopt;
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) {
        return a.filename() != b.filename() ? a.filename() < b.filename() : a < b;
    });
    return files;
}

MailDate fileDate(const std::filesystem::path& file)
{
    using namespace std::chrono;
    const auto written = file_clock::to_sys(std::filesystem::last_write_time(file));
    const std::time_t seconds =
        system_clock::to_time_t(time_point_cast<system_clock::duration>(written));
    std::tm parts{};
    if (const std::tm* local = std::localtime(&seconds); local != nullptr) parts = *local;
    return {parts.tm_year + 1900,
            parts.tm_mon + 1,
            parts.tm_mday,
            parts.tm_hour,
            parts.tm_min,
            parts.tm_sec,
            {}};
}

}
