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

// Controls that no text in any charset of mail has; TAB, line ends, the bytes of
// JIS escapes and the end mark of old texts are none.
bool isBinaryByte(char c);
// Whether one is among the first 64 KB of a file that is there.
bool isBinaryFile(const std::filesystem::path& path);

// The mark that some programs write before the first character.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// "From " as the beginning of a separator, not of a field "From : x".
bool beginsLikeSeparator(std::string_view line);

}
