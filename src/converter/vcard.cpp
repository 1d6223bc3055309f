#include "converter/vcard.h"

#include "converter/ascii.h"
#include "converter/charset.h"
#include "converter/charset_guess.h"
#include "converter/transfer.h"
#include "converter/vcard_lines.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace tolvek {

namespace {

constexpr std::size_t kMostValues = 200; // of one card; limits a hostile one
constexpr int kUnranked = 101;           // ranks run from 1, the most preferred, to 100
constexpr int kNameParts = 3;            // of N: family, given, further names

struct CardValue {
    std::string name;
    std::string bytes; // transfer encoding undone
    std::string charset;
    int rank = kUnranked;
};

int rankOf(const VcardProperty& property)
{
    const std::string written = property.parameter("pref");
    // PREF is version 4.0; TYPE=PREF, or PREF alone, is older.
    const int rank = written.size() < 4 ? std::atoi(written.c_str()) : 0;
    if (rank > 0 && rank < kUnranked) return rank;
    return property.hasType("pref") ? 1 : kUnranked;
}

CardValue valueOf(const VcardProperty& property, bool utf8)
{
    const std::string encoding = property.encoding();
    const std::string charset = property.parameter("charset");
    // Raw values of a UTF-16 file are UTF-8 by now, whatever their label is.
    const bool marked = utf8 && (encoding.empty() || charset.empty());
    return {property.name, decodeTransfer(property.value, encoding), marked ? "utf-8" : charset,
            rankOf(property)};
}

bool isWanted(std::string_view name)
{
    static constexpr std::array<std::string_view, 4> kWanted{"fn", "n", "nickname", "email"};
    return std::find(kWanted.begin(), kWanted.end(), name) != kWanted.end();
}

std::string_view labelOf(Charset charset)
{
    switch (charset) {
    case Charset::Iso2022Jp:
        return "iso-2022-jp";
    case Charset::Utf8:
        return "utf-8";
    case Charset::EucJp:
        return "euc-jp";
    case Charset::Ansi:
        return "cp932";
    case Charset::Ascii:
    case Charset::Western:
    case Charset::Other:
        break; // no label: read as the file's own
    }
    return "";
}

void labelByGuess(std::vector<CardValue>& values)
{
    // All together, as a single name is too short to guess from.
    std::string unlabelled;
    for (const CardValue& value : values)
        if (value.charset.empty()) unlabelled += value.bytes + '\n';
    const std::string_view guess = labelOf(guessCharset(unlabelled));
    for (CardValue& value : values)
        if (value.charset.empty()) value.charset = guess;
}

std::vector<CardValue> valuesOf(std::string_view card, bool utf8)
{
    std::vector<CardValue> values;
    VcardProperties properties(card);
    VcardProperty property;
    while (values.size() < kMostValues && properties.next(property))
        if (isWanted(property.name)) values.push_back(valueOf(property, utf8));
    labelByGuess(values);
    // The most preferred come first, the others in the order of the card.
    std::stable_sort(values.begin(), values.end(),
                     [](const CardValue& a, const CardValue& b) { return a.rank < b.rank; });
    return values;
}

// Decodes \, \; \: \\ and \n; any other backslash is literal.
Text unescaped(TextView text)
{
    constexpr TextView kEscaped = u",;:\\";
    Text out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t next = text[at] == u'\\' && at + 1 < text.size() ? text[at + 1] : u'\0';
        const bool lineEnd = next == u'n' || next == u'N';
        const bool escape = lineEnd || (next != 0 && kEscaped.find(next) != TextView::npos);
        if (escape) ++at;
        out += lineEnd ? u'\n' : text[at];
    }
    return out;
}

std::vector<Text> splitAt(TextView text, char16_t separator)
{
    std::vector<Text> pieces;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == u'\\') {
            ++at;
        } else if (text[at] == separator) {
            pieces.push_back(unescaped(text.substr(begin, at - begin)));
            begin = at + 1;
        }
    }
    pieces.push_back(unescaped(text.substr(begin)));
    return pieces;
}

Text joinedName(TextView value)
{
    std::vector<Text> parts = splitAt(value, u';');
    if (parts.size() > kNameParts) parts.resize(kNameParts);
    Text name;
    for (const Text& part : parts)
        for (const Text& piece : splitAt(part, u','))
            if (const Text text = friendText(piece); !text.empty())
                name += (name.empty() ? u"" : u" ") + text;
    return name;
}

// The first value of that name that isn't empty after conversion.
template <class Made>
Text firstOf(const std::vector<CardValue>& values, const char* name, Made made)
{
    for (const CardValue& value : values) {
        if (value.name != name) continue;
        if (Text text = made(decodeCharset(value.bytes, value.charset)); !text.empty()) return text;
    }
    return {};
}

Text nameOf(const std::vector<CardValue>& values)
{
    Text name = firstOf(values, "fn", [](const Text& text) { return friendText(unescaped(text)); });
    // A name that is empty after conversion counts as missing.
    if (name.empty()) name = firstOf(values, "n", joinedName);
    if (!name.empty()) return name;
    return firstOf(values, "nickname",
                   [](const Text& text) { return friendText(splitAt(text, u',').front()); });
}

Text addressOf(const std::vector<CardValue>& values)
{
    return firstOf(values, "email",
                   [](const Text& text) { return friendAddress(unescaped(text)); });
}

}

void readVcards(const BookFile& file, const FriendSink& sink)
{
    VcardScanner cards(file.bytes);
    for (std::string_view card; cards.next(card);) {
        const std::vector<CardValue> values = valuesOf(card, file.utf8);
        const Text address = addressOf(values);
        if (!address.empty()) sink({{}, {}, nameOf(values), address});
    }
}

}
