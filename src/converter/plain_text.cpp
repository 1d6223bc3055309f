#include "converter/plain_text.h"

#include "converter/ascii.h"
#include "converter/nearest_forms.h"
#include "platform/runtime/ansi_forms.h"
#include "platform/runtime/codepage932.h"

#include <algorithm>

namespace tolvek {

namespace {

bool isControl(char16_t c)
{
    // C0 without TAB, DEL and C1, and the line and paragraph separators.
    return (c < 0x20 && c != u'\t') || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

// Of the first character. Whether all its bytes are there is for the caller to check.
std::size_t characterLength(std::string_view ansi)
{
    const auto c = static_cast<unsigned char>(ansi.front());
    return isLeadByte(c) ? 2 : 1;
}

// Characters that stay as they are; most lines consist of nothing else.
bool isPlain(char16_t c)
{
    return isOrdinary(c) && !isControl(c) && c != u'\'';
}

bool isLineEnd(char16_t unit)
{
    // NEL, LS and PS are line ends of other systems.
    return unit == u'\n' || unit == u'\r' || unit == u'\u0085' || unit == u'\u2028' ||
           unit == u'\u2029';
}

Text withoutControls(Text text)
{
    for (char16_t& c : text) {
        if (isControl(c)) c = u' ';
        // A single quote would end a quoted value of the store.
        if (c == u'\'') c = u'’';
    }
    return text;
}

}

Text plainLine(TextView text)
{
    if (std::all_of(text.begin(), text.end(), isPlain)) return Text(text);
    return withoutControls(nearestForms(ansiForms(text)));
}

Text foldedLine(TextView text)
{
    return withoutControls(ansiForms(text));
}

void appendPlainLines(std::string& lines, TextView text)
{
    while (!text.empty()) {
        const auto stop = std::find_if(text.begin(), text.end(), isLineEnd);
        const auto length = static_cast<std::size_t>(stop - text.begin());
        const bool pair = text.substr(length).starts_with(kCrLf);
        lines.append(toAnsi(plainLine(text.substr(0, length)))).push_back('\n');
        text.remove_prefix(std::min(length + (pair ? 2 : 1), text.size()));
    }
}

bool isBlankAnsi(std::string_view lines)
{
    constexpr std::string_view kWideBlank = "\x81\x40";
    while (!lines.empty()) {
        // Safe bytewise: each step begins at a character, and a lead byte is no blank.
        const bool wide = lines.starts_with(kWideBlank);
        if (!wide && !isAsciiSpace(static_cast<unsigned char>(lines.front()))) return false;
        lines.remove_prefix(wide ? 2 : 1);
    }
    return true;
}

std::string withoutBlanks(std::string_view lines)
{
    std::string out;
    while (!lines.empty()) {
        const std::string_view character = lines.substr(0, characterLength(lines));
        if (!isBlankAnsi(character)) out += character;
        lines.remove_prefix(character.size());
    }
    return out;
}

std::string_view wholePrefix(std::string_view ansi, std::size_t limit)
{
    std::size_t end = 0;
    while (end < ansi.size()) {
        const std::size_t length = characterLength(ansi.substr(end));
        if (end + length > limit || end + length > ansi.size()) break;
        end += length;
    }
    return ansi.substr(0, end);
}

}
