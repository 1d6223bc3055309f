// Recognises a file by its beginning: an mbox, a single Internet message, or several
// of them in a row. Anything that isn't one of these for certain is Nothing, never a
// guess.
#pragma once
#include <filesystem>
#include <string_view>

namespace tolvek {

enum class MailFileKind { Nothing, Empty, Mbox, Message };

// Missing files and folders are Nothing. Throws std::system_error for an existing file
// that can't be read.
MailFileKind recogniseFile(const std::filesystem::path& path);
MailFileKind recognise(std::string_view beginning);

// Control characters that no text in any charset of mail contains. TAB, line ends, the
// bytes of JIS escapes and the end mark of old texts are not among them.
bool isBinaryByte(char c);
// Whether the file exists and has a binary byte within its first 64 KB.
bool isBinaryFile(const std::filesystem::path& path);

// The byte order mark of UTF-8, which some programs write first.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Whether the line begins with the "From " of a separator, rather than with a field
// "From : x".
bool beginsLikeSeparator(std::string_view line);

}
