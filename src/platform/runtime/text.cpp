// Slices, trimming and UTF-8 conversion.
#include "platform/runtime/text.h"

#include "platform/runtime/runtime_error.h"

#include <algorithm>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace tolvek {

namespace {

constexpr TextView kTrimmed = u" \u3000";
constexpr char32_t kReplacement = 0xFFFD;

std::size_t position(int start)
{
    if (start < 1) throw RuntimeError(5);
    return static_cast<std::size_t>(start) - 1;
}

std::size_t count(int length)
{
    if (length < 0) throw RuntimeError(5);
    return static_cast<std::size_t>(length);
}

TextView slice(TextView text, std::size_t from, std::size_t units)
{
    // substr throws beyond the end; the classic platform returns an empty text.
    return from < text.size() ? text.substr(from, units) : TextView();
}

void appendUtf8(std::string& bytes, char32_t c)
{
    char buffer[U8_MAX_LENGTH];
    int used = 0;
    // The buffer has room for any character, and the caller has replaced
    // surrogates.
    U8_APPEND_UNSAFE(buffer, used, c);
    bytes.append(buffer, static_cast<std::size_t>(used));
}

}

Text trim(TextView text)
{
    return ltrim(rtrim(text));
}

Text ltrim(TextView text)
{
    const auto first = text.find_first_not_of(kTrimmed);
    return Text(first == text.npos ? TextView() : text.substr(first));
}

Text rtrim(TextView text)
{
    return Text(text.substr(0, text.find_last_not_of(kTrimmed) + 1)); // npos + 1 is 0
}

Text mid(TextView text, int start)
{
    return Text(slice(text, position(start), text.npos));
}

Text mid(TextView text, int start, int length)
{
    return Text(slice(text, position(start), count(length)));
}

Text left(TextView text, int length)
{
    return Text(text.substr(0, count(length)));
}

Text right(TextView text, int length)
{
    const std::size_t units = std::min(count(length), text.size());
    return Text(text.substr(text.size() - units));
}

void overwrite(Text& target, int start, TextView replacement, int length)
{
    const std::size_t from = position(start);
    if (from >= target.size()) throw RuntimeError(5);
    const std::size_t units = std::min({count(length), replacement.size(), target.size() - from});
    std::copy_n(replacement.begin(), units, target.begin() + static_cast<std::ptrdiff_t>(from));
}

int length(TextView text)
{
    return static_cast<int>(text.size());
}

int byteLength(TextView text)
{
    return 2 * length(text);
}

Text blanks(int count)
{
    return Text(tolvek::count(count), u' ');
}

Text cutAtNul(TextView text)
{
    return Text(text.substr(0, text.find(u'\0')));
}

Text decimal(long long value)
{
    const std::string digits = std::to_string(value);
    return Text(digits.begin(), digits.end());
}

Text fromUtf8(std::string_view bytes)
{
    Text text;
    text.reserve(bytes.size());
    const char* source = bytes.data();
    for (std::size_t i = 0; i < bytes.size();) {
        UChar32 c = 0;
        U8_NEXT_OR_FFFD(source, i, bytes.size(), c);
        if (c > 0xFFFF) text += U16_LEAD(c);
        text += static_cast<char16_t>(c > 0xFFFF ? U16_TRAIL(c) : c);
    }
    return text;
}

std::string toUtf8(TextView text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        char32_t c = 0;
        U16_NEXT(text.data(), i, text.size(), c);
        appendUtf8(bytes, U16_IS_SURROGATE(c) ? kReplacement : c);
    }
    return bytes;
}

}
