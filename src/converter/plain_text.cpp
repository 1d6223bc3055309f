#include "converter/plain_text.h"

#include "converter/nearest_forms.h"
#include "platform/runtime/ansi_forms.h"

#include <algorithm>

namespace tolvek {

namespace {

bool isControl(char16_t c)
{
    return (c < 0x20 && c != u'\t') || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

// Nothing is done to these.
bool isPlain(char16_t c)
{
    return isOrdinary(c) && !isControl(c) && c != u'\'';
}

bool isLineEnd(char16_t unit)
{
    return unit == u'\n' || unit == u'\r' || unit == u'\u0085' || unit == u'\u2028' ||
           unit == u'\u2029';
}

Text withoutControls(Text text)
{
    for (char16_t& c : text) {
        if (isControl(c)) c = u' ';
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

std::vector<Text> plainLines(TextView text)
{
    std::vector<Text> lines;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!isLineEnd(text[at])) continue;
        lines.push_back(plainLine(text.substr(begin, at - begin)));
        if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n') ++at;
        begin = at + 1;
    }
    if (begin < text.size()) lines.push_back(plainLine(text.substr(begin)));
    return lines;
}

std::string_view wholePrefix(std::string_view ansi, std::size_t limit)
{
    std::size_t end = 0;
    while (end < ansi.size()) {
        const auto c = static_cast<unsigned char>(ansi[end]);
        const bool lead = (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
        const std::size_t length = lead ? 2 : 1;
        if (end + length > limit || end + length > ansi.size()) break;
        end += length;
    }
    return ansi.substr(0, end);
}

}
