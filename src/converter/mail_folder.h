// A mail box that is a folder: single messages in *.eml files, or a Maildir
// with its folders cur and new.
#pragma once
#include "converter/mail_date.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace tolvek {

// The folder under the box's name, with or without the name's extension; empty
// when there is none.
std::filesystem::path folderOfBox(const std::filesystem::path& box);

// Its message files, by name; nothing when it is no folder of mails.
std::optional<std::vector<std::filesystem::path>> messageFiles(const std::filesystem::path& folder);

// When the file was written last, in the user's time: what a message without
// any date is known to be older than.
MailDate fileDate(const std::filesystem::path& file);

}
