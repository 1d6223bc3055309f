#include "platform/runtime/profile.h"

#include "platform/runtime/codepage932.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/profile_text.h"
#include "platform/system/files.h"

#include <system_error>

namespace tolvek {

namespace {

// At most `limit` bytes, without half a character at the end.
std::string wholeCharacters(const std::string& bytes, std::size_t limit)
{
    std::size_t end = 0;
    while (end < bytes.size()) {
        const std::size_t size = isLeadByte(static_cast<unsigned char>(bytes[end])) ? 2 : 1;
        if (end + size > limit) break;
        end += size;
    }
    return bytes.substr(0, end);
}

// A file that can't be read has no values, so every key gets its default.
std::optional<ProfileText> storedText(TextView file)
{
    try {
        return ProfileText(readFile(existingPath(file)));
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

// The classic platform's call drops a default's trailing blanks.
std::string withoutTrailingBlanks(const std::string& bytes)
{
    return bytes.substr(0, bytes.find_last_not_of(" \t") + 1);
}

TextView upToLineEnd(TextView value)
{
    return value.substr(0, value.find_first_of(TextView(u"\r\n\0", 3)));
}

std::string contentsOrNothing(const Path& path)
{
    // An existing file that can't be read throws: it must not be replaced by a file
    // with a single key.
    return entryExists(path) ? readFile(path) : std::string();
}

}

Profile::Profile(TextView file) : text_(storedText(file)) {}

Text Profile::get(TextView section, TextView key, TextView fallback, int size,
                  int* returnedLength) const
{
    const auto stored = text_ ? text_->value(section, key) : std::nullopt;
    const std::string all = stored ? *stored : withoutTrailingBlanks(toAnsi(fallback));
    const std::string bytes =
        wholeCharacters(all, size > 0 ? static_cast<std::size_t>(size) - 1 : 0);
    if (returnedLength) *returnedLength = static_cast<int>(bytes.size());
    return fromAnsi(bytes);
}

Text getProfileString(TextView section, TextView key, TextView fallback, int size, TextView file,
                      int* returnedLength)
{
    return Profile(file).get(section, key, fallback, size, returnedLength);
}

bool writeProfileString(TextView section, TextView key, TextView value, TextView file)
{
    const Path path = targetPath(file);
    if (isReadOnly(path)) return false;
    try {
        ProfileText text(contentsOrNothing(path));
        if (text.setValue(section, key, toAnsi(upToLineEnd(value))))
            replaceContents(path, text.bytes());
        return true;
    } catch (const std::system_error&) {
        return false; // the caller reports it, in its own single way
    }
}

}
