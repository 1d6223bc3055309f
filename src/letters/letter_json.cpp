#include "letters/letter_json.h"

#include <array>
#include <cstdio>

namespace tolvek {

namespace {

std::string escapedUnit(char16_t c)
{
    switch (c) {
    case u'"':
        return "\\\"";
    case u'\\':
        return "\\\\";
    case u'\n':
        return "\\n";
    case u'\r':
        return "\\r";
    case u'\t':
        return "\\t";
    default:
        break;
    }
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(c));
    return code.data();
}

bool isEscaped(char16_t c)
{
    return c < 0x20 || c == u'"' || c == u'\\' || c == 0x7F;
}

std::string valueOrNull(TextView text)
{
    return text.empty() || text == kNoLetterValue ? "null" : jsonText(text);
}

std::string mailbox(TextView name, TextView address)
{
    return "{\"name\":" + valueOrNull(name) + ",\"address\":" + valueOrNull(address) + "}";
}

// 1998-01-06; as stored if it hasn't the form of a date.
Text dashed(TextView date)
{
    if (date.size() != 8) return Text(date);
    return Text(date.substr(0, 4)) + u"-" + Text(date.substr(4, 2)) + u"-" + Text(date.substr(6));
}

Text withColons(TextView time)
{
    if (time.size() != 6) return Text(time);
    return Text(time.substr(0, 2)) + u":" + Text(time.substr(2, 2)) + u":" + Text(time.substr(4));
}

std::string filesOf(const Library& library, LetterId id)
{
    std::string names;
    for (const int file : library.filesOf(id)) {
        if (!names.empty()) names += ',';
        names += jsonText(library.sources()[static_cast<std::size_t>(file)].status.file.name());
    }
    return "[" + names + "]";
}

}

std::string jsonText(TextView text)
{
    std::string out = "\"";
    std::size_t plain = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!isEscaped(text[at])) continue;
        out += toUtf8(text.substr(plain, at - plain)) + escapedUnit(text[at]);
        plain = at + 1;
    }
    return out + toUtf8(text.substr(plain)) + '"';
}

std::string jsonLetter(const Library& library, LetterId id, const LetterQuery& query)
{
    const Letter letter = library.letter(id);
    std::array<char, 32> identity{};
    std::snprintf(identity.data(), identity.size(), "%016llx",
                  static_cast<unsigned long long>(letter.identity));
    return std::string("{\"id\":\"") + identity.data() +
           "\",\"date\":" + jsonText(dashed(letter.date)) +
           ",\"time\":" + jsonText(withColons(letter.time)) +
           ",\"sent\":" + (letter.sent ? "true" : "false") +
           ",\"from\":" + mailbox(letter.senderName, letter.senderAddress) +
           ",\"to\":" + mailbox(letter.receiverName, letter.receiverAddress) +
           ",\"person\":" + jsonText(library.people()[letter.person].name) +
           ",\"subject\":" + jsonText(letter.subject) +
           ",\"line\":" + jsonText(matchedLine(letter.text, query).line) +
           ",\"files\":" + filesOf(library, id) + ",\"text\":" + jsonText(letter.text) + "}";
}

}
