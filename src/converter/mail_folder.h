// A mail box that is a folder: single messages in *.eml files, or a Maildir
// with its folders cur and new.
#pragma once
#include "converter/mail_date.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace tolvek {

// The folder with the name of the box, with or without its extension; empty if there
// is none.
std::filesystem::path folderOfBox(const std::filesystem::path& box);

// Its message files by name; empty if it is no folder of mails.
std::optional<std::vector<std::filesystem::path>> messageFiles(const std::filesystem::path& folder);

// When the file was last written, in local time: a message without any date is at
// least as old.
MailDate fileDate(const std::filesystem::path& file);

}
