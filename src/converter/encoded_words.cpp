#include "converter/encoded_words.h"

#include "converter/ascii.h"
#include "converter/charset.h"
#include "converter/transfer.h"

#include <algorithm>

namespace tolvek {

namespace {

bool isLabelUnit(char16_t unit)
{
    return unit > 0x20 && unit < 0x7F && unit != u'?' && unit != u'=';
}

bool isBase64Unit(char16_t unit)
{
    return isAsciiLetter(unit) || isAsciiDigit(unit) || unit == u'+' || unit == u'/' ||
           unit == u'=';
}

// Length of the content, and of the end mark after it (0 when missing).
struct Extent {
    std::size_t content;
    std::size_t mark;
};

// Up to "?=", but not past the first character that can't belong to a word: a field
// may contain thousands of word beginnings, and the cost must stay linear.
Extent base64Extent(TextView rest)
{
    const auto fits = [](char16_t unit) { return isBase64Unit(unit) || isAsciiSpace(unit); };
    const auto end = std::find_if_not(rest.begin(), rest.end(), fits);
    const auto length = static_cast<std::size_t>(end - rest.begin());
    if (rest.substr(length).starts_with(u"?=")) return {length, 2};
    // Without the end mark a blank ends the word; a single "?" is what a cut mark
    // left.
    const auto stop = std::find_if_not(rest.begin(), end, isBase64Unit);
    const auto run = static_cast<std::size_t>(stop - rest.begin());
    return {run, rest.substr(run).starts_with(u"?") ? 1u : 0u};
}

// The length up to "?=" if no "=?" of another word comes first; else npos.
std::size_t quotedLength(TextView rest)
{
    for (std::size_t at = rest.find(u'?'); at != TextView::npos; at = rest.find(u'?', at + 1)) {
        if (rest.substr(at + 1).starts_with(u"=")) return at;
        if (at > 0 && rest[at - 1] == u'=') break;
    }
    return TextView::npos;
}

Extent quotedExtent(TextView rest)
{
    const std::size_t end = quotedLength(rest);
    if (end != TextView::npos) return {end, 2};
    // Without the end mark a blank ends the word.
    return {std::min(rest.find_first_of(u" \t\n"), rest.size()), 0};
}

bool onlyAscii(TextView text)
{
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

std::size_t blankLength(TextView text)
{
    const auto stop = std::find_if_not(text.begin(), text.end(),
                                       [](char16_t unit) { return isAsciiSpace(unit); });
    return static_cast<std::size_t>(stop - text.begin());
}

// Base64 that ends inside a group of four continues in the next word if the two
// together are whole.
bool goesOn(const EncodedWord& word, const EncodedWord& next)
{
    return word.base64 && !word.coded.ends_with("=") && word.coded.size() % 4 != 0 &&
           (word.coded.size() + next.coded.size()) % 4 == 0;
}

void join(EncodedWord& word, const EncodedWord& next)
{
    if (goesOn(word, next)) {
        // The cut group is taken back and decoded again with the rest of it.
        const std::size_t whole = word.coded.size() / 4 * 4;
        word.bytes.resize(word.bytes.size() - decodeBase64(word.coded.substr(whole)).size());
        word.coded.erase(0, whole);
        word.coded += next.coded;
        word.bytes += decodeBase64(word.coded);
    } else {
        word.bytes += next.bytes;
        word.coded = next.coded;
    }
}

// The "=?label?B?" at a position and its length; 0 if none begins there.
struct WordBegin {
    TextView label;
    bool base64 = false;
    std::size_t length = 0;
};

WordBegin wordBegin(TextView text, std::size_t position)
{
    if (position >= text.size() || !text.substr(position).starts_with(u"=?")) return {};
    const TextView rest = text.substr(position + 2);
    const auto label = std::find_if_not(rest.begin(), rest.end(), isLabelUnit);
    const auto size = static_cast<std::size_t>(label - rest.begin());
    const TextView kind = rest.substr(size).substr(0, 3);
    if (size == 0 || kind.size() < 3 || kind[0] != u'?' || kind[2] != u'?') return {};
    // lower case
    const char16_t letter = kind[1] | 0x20;
    if (letter != u'b' && letter != u'q') return {};
    return {rest.substr(0, size), letter == u'b', 2 + size + 3};
}

// Decodes the adjacent words from `word` on and returns their length in the text.
// Bytes are converted only where charset or encoding changes: senders split characters
// between words.
std::size_t appendRow(Text& out, TextView text, std::size_t position, EncodedWord word)
{
    std::size_t end = position + word.length;
    for (;;) {
        const std::size_t start = end + blankLength(text.substr(end));
        EncodedWord next = encodedWordAt(text, start);
        const std::size_t length = next.length;
        const bool joined =
            length > 0 && next.base64 == word.base64 && equalsAscii(next.charset, word.charset);
        if (joined) {
            join(word, next);
        } else {
            out += decodeCharset(word.bytes, word.charset);
            word = std::move(next);
        }
        if (!joined && length == 0) return end - position;
        end = start + length;
    }
}

}

EncodedWord encodedWordAt(TextView text, std::size_t position)
{
    const WordBegin begin = wordBegin(text, position);
    if (begin.length == 0) return {};
    const TextView body = text.substr(position + begin.length);
    const Extent extent = begin.base64 ? base64Extent(body) : quotedExtent(body);
    const TextView content = body.substr(0, extent.content);
    if (!onlyAscii(content)) return {};
    const std::string ascii = asciiOnly(content);
    return {asciiOnly(begin.label), begin.base64,
            begin.base64 ? decodeBase64(ascii) : decodeQWord(ascii), ascii,
            begin.length + extent.content + extent.mark};
}

std::size_t closedWordLength(TextView text, std::size_t position)
{
    const WordBegin begin = wordBegin(text, position);
    if (begin.length == 0) return 0;
    const TextView body = text.substr(position + begin.length);
    const Extent extent = begin.base64 ? base64Extent(body) : Extent{quotedLength(body), 2};
    const bool closed = extent.content != TextView::npos && extent.mark == 2;
    return closed && onlyAscii(body.substr(0, extent.content))
               ? begin.length + extent.content + extent.mark
               : 0;
}

Text decodeEncodedWords(TextView text)
{
    Text out;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t next = std::min(text.find(u"=?", at), text.size());
        out += text.substr(at, next - at);
        at = next;
        if (at == text.size()) break;
        EncodedWord word = encodedWordAt(text, at);
        if (word.length > 0)
            at += appendRow(out, text, at, std::move(word));
        else
            out += text[at++];
    }
    return out;
}

namespace {

bool isRaw(char c)
{
    return static_cast<unsigned char>(c) >= 0x80 || c == '\x1B';
}

// Writes the content of a word with raw bytes as Q, so that it is decoded by the
// word's own charset; the text around it may be in another.
std::string quotedWord(std::string_view label, std::string_view content)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string word = "=?" + std::string(label) + "?Q?";
    for (const char c : content) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = isAsciiLetter(byte) || isAsciiDigit(byte);
        if (plain)
            word += c;
        else
            (word += '=').append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
    }
    return word + "?=";
}

// The word at the front of a raw value, rewritten when it holds raw bytes.
std::string rewrittenWord(std::string_view rest, std::size_t& length)
{
    // Bytes; a field full of "=?" must not cost the square of its length.
    constexpr std::size_t kLongestWord = 1000;
    const std::string_view near = rest.substr(0, kLongestWord);
    const std::size_t kind = near.find('?', 2);
    if (kind == std::string_view::npos || near.size() < kind + 3 || near[kind + 2] != '?')
        return {};
    const std::size_t end = near.find("?=", kind + 3);
    if (end == std::string_view::npos) return {};
    const std::string_view content = near.substr(kind + 3, end - kind - 3);
    if (std::none_of(content.begin(), content.end(), isRaw)) return {};
    length = end + 2;
    const bool quoted = (near[kind + 1] | 0x20) == 'q';
    return quotedWord(near.substr(2, kind - 2),
                      quoted ? decodeQWord(content) : std::string(content));
}

std::string withoutRawWords(std::string_view value)
{
    if (value.find("=?") == std::string_view::npos ||
        std::none_of(value.begin(), value.end(), isRaw))
        return std::string(value);
    std::string out;
    for (std::size_t at = 0; at < value.size();) {
        std::size_t length = 1;
        const bool begins = value.substr(at, 2) == "=?";
        const std::string word = begins ? rewrittenWord(value.substr(at), length) : std::string();
        out += word.empty() ? std::string(1, value[at]) : word;
        at += word.empty() ? 1 : length;
    }
    return out;
}

}

Text unfoldedText(std::string_view rawValue)
{
    Text text = decodeGuessed(withoutRawWords(rawValue));
    for (std::size_t end = text.find(u"\r\n"); end != Text::npos; end = text.find(u"\r\n", end))
        text.erase(end, 1);
    Text unfolded;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != u'\n') {
            unfolded += text[at];
            continue;
        }
        unfolded += u' ';
        // The fold and all blanks after it are one blank; -1 for the loop's own step.
        at += blankLength(TextView(text).substr(at)) - 1;
    }
    return unfolded;
}

}
