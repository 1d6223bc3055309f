// What a file is, told from its beginning: an mbox, a single Internet message,
// several of them one after the other; anything that isn't one of these for
// certain is Nothing, never a guess.
#pragma once
#include <filesystem>
#include <string_view>

namespace tolvek {

enum class MailFileKind { Nothing, Empty, Mbox, Message };

// Missing files and folders are Nothing. Throws std::system_error on a file
// that is there and can't be read.
MailFileKind recogniseFile(const std::filesystem::path& path);
MailFileKind recognise(std::string_view beginning);

// The mark that some programs write before the first character.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// "From " as the beginning of a separator, not of a field "From : x".
bool beginsLikeSeparator(std::string_view line);

}
