#include "converter/charset.h"

#include "converter/ascii.h"
#include "converter/charset_guess.h"
#include "converter/iso2022jp.h"
#include "platform/runtime/codepage932.h"

#include <unicode/ucnv.h>

#include <map>
#include <memory>
#include <vector>

namespace tolvek {

namespace {

constexpr std::string_view kBadPlace = "\x81\xAC"; // 〓

std::string cleanLabel(std::string_view label)
{
    std::string name = lowerAscii(label.substr(0, label.find('*')));
    std::erase_if(name, [](char c) {
        return c == '"' || c == '\'' || isAsciiSpace(static_cast<unsigned char>(c));
    });
    return name;
}

Charset charsetOf(const std::string& name)
{
    static const std::map<std::string, Charset, std::less<>> kNames{
        {"", Charset::Ascii},
        {"us-ascii", Charset::Ascii},
        {"ascii", Charset::Ascii},
        {"ansi_x3.4-1968", Charset::Ascii},
        {"unknown-8bit", Charset::Ascii},
        {"unknown", Charset::Ascii},
        {"x-unknown", Charset::Ascii},
        {"default", Charset::Ascii},
        {"iso-2022-jp", Charset::Iso2022Jp},
        {"csiso2022jp", Charset::Iso2022Jp},
        {"jis", Charset::Iso2022Jp},
        {"iso2022-jp", Charset::Iso2022Jp},
        {"shift_jis", Charset::Ansi},
        {"shift-jis", Charset::Ansi},
        {"x-sjis", Charset::Ansi},
        {"sjis", Charset::Ansi},
        {"windows-31j", Charset::Ansi},
        {"cp932", Charset::Ansi},
        {"ms932", Charset::Ansi},
        {"ms_kanji", Charset::Ansi},
        {"csshiftjis", Charset::Ansi},
        {"windows-932", Charset::Ansi},
        {"x-ms-cp932", Charset::Ansi},
        {"euc-jp", Charset::EucJp},
        {"x-euc-jp", Charset::EucJp},
        {"eucjp", Charset::EucJp},
        {"x-euc", Charset::EucJp},
        {"ujis", Charset::EucJp},
        {"cp51932", Charset::EucJp},
        {"eucjp-ms", Charset::EucJp},
        {"utf-8", Charset::Utf8},
        {"utf8", Charset::Utf8},
        {"unicode-1-1-utf-8", Charset::Utf8}};
    if (name.starts_with("iso-2022-jp")) return Charset::Iso2022Jp;
    const auto found = kNames.find(name);
    return found == kNames.end() ? Charset::Other : found->second;
}

Text decodeEucJp(std::string_view bytes)
{
    Text text;
    std::string run;
    const auto at = [&](std::size_t n) {
        return static_cast<unsigned char>(n < bytes.size() ? bytes[n] : 0);
    };
    const auto high = [](unsigned char c) { return c >= 0xA1 && c <= 0xFE; };
    while (!bytes.empty()) {
        std::size_t length = 2;
        if (at(0) < 0x80)
            run += bytes[0], length = 1;
        else if (at(0) == 0x8E && at(1) >= 0xA1 && at(1) <= 0xDF)
            run += bytes[1];
        else if (at(0) == 0x8F && high(at(1)) && high(at(2)))
            text += fromAnsi(run) + textOfJis0212(at(1) & 0x7F, at(2) & 0x7F), run.clear(),
                length = 3;
        else if (high(at(0)) && high(at(1)))
            run += ansiOfJis(at(0) & 0x7F, at(1) & 0x7F);
        else
            run += kBadPlace, length = 1;
        bytes.remove_prefix(length);
    }
    return text + fromAnsi(run);
}

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

// Mail under this label has windows-1252's characters too.
bool isLatin1(const std::string& name)
{
    return name == "iso-8859-1" || name == "iso8859-1" || name == "latin1" || name == "iso_8859-1";
}

// A label that is none of ours, as the library knows it; false when it doesn't.
bool decodeOther(std::string_view bytes, const std::string& name, Text& text)
{
    UErrorCode status = U_ZERO_ERROR;
    const Converter converter(ucnv_open(isLatin1(name) ? "windows-1252" : name.c_str(), &status),
                              &ucnv_close);
    if (U_FAILURE(status)) return false;
    std::vector<char16_t> units(bytes.size() * 2 + 16);
    const int length = ucnv_toUChars(converter.get(), units.data(), static_cast<int>(units.size()),
                                     bytes.data(), static_cast<int>(bytes.size()), &status);
    if (U_FAILURE(status)) return false;
    text.assign(units.data(), static_cast<std::size_t>(length));
    return true;
}

Text decodeWestern(std::string_view bytes)
{
    Text text;
    return decodeOther(bytes, "windows-1252", text) ? text : fromAnsi(bytes);
}

Text decodeAs(std::string_view bytes, Charset charset)
{
    switch (charset) {
    case Charset::Western:
        return decodeWestern(bytes);
    case Charset::Iso2022Jp:
        return decodeIso2022Jp(isAscii(bytes) ? restoreEscapes(bytes) : std::string(bytes));
    case Charset::Utf8:
        return fromUtf8(bytes);
    case Charset::EucJp:
        return decodeEucJp(bytes);
    default:
        return fromAnsi(bytes);
    }
}

bool contradicts(std::string_view bytes, Charset label)
{
    switch (label) {
    case Charset::Iso2022Jp:
        return !isAscii(bytes) && !looksLikeIso2022Jp(bytes);
    case Charset::Utf8:
        return !isMostlyUtf8(bytes);
    case Charset::EucJp:
        return !isValidEucJp(bytes);
    case Charset::Ansi:
        return !isValidAnsi(bytes);
    default:
        return true;
    }
}

// The charsets in which Japanese bytes are no text of any language. Others, of
// old systems, have letters where kana begin.
bool isWesternName(const std::string& name)
{
    for (const std::string_view beginning :
         {"iso-8859-1", "iso-8859-2", "iso-8859-3", "iso-8859-4", "iso-8859-9", "iso8859-1",
          "latin1", "iso_8859-1", "windows-1250", "windows-1252", "windows-1254", "windows-1257",
          "cp1252"})
        if (name.starts_with(beginning)) return !name.ends_with("-11");
    return false;
}

bool isWideName(const std::string& name)
{
    return name.starts_with("utf-") || name.starts_with("utf1") || name.starts_with("ucs") ||
           name.starts_with("iso-10646") || name.starts_with("unicode");
}

bool isEasternName(const std::string& name)
{
    for (const std::string_view beginning :
         {"gb", "big5", "euc-", "ks_c", "cp949", "hz", "x-windows-9"})
        if (name.starts_with(beginning)) return true;
    return false;
}

// UTF-16 by its mark, else by the half of the bytes that are zero or the same
// high byte of kana; false when the name isn't UTF-16's without an order.
bool decodeUtf16(std::string_view bytes, const std::string& name, Text& text)
{
    if (name != "utf-16" && name != "ucs-2" && name != "iso-10646-ucs-2" && name != "unicode")
        return false;
    std::size_t high[2] = {0, 0};
    for (std::size_t at = 0; at < bytes.size(); ++at)
        if (bytes[at] == 0 || bytes[at] == 0x30) ++high[at % 2];
    const bool marked = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    const bool little = marked ? bytes[0] == '\xFF' : high[1] > high[0];
    return decodeOther(bytes.substr(marked ? 2 : 0), little ? "utf-16le" : "utf-16be", text);
}

// What the bytes are for certain, whatever the label says; Other when nothing is.
Charset evidence(std::string_view bytes, Charset label, const std::string& name)
{
    if (label == Charset::Iso2022Jp || isAscii(bytes) || isWideName(name)) return Charset::Other;
    const bool eastern = label != Charset::Other || isEasternName(name);
    if (label != Charset::Utf8 && isSurelyUtf8(bytes, eastern)) return Charset::Utf8;
    const bool western = label == Charset::Other && isWesternName(name);
    if ((western || label == Charset::Ansi) && isSurelyEucJp(bytes) &&
        guessCharset(bytes) == Charset::EucJp)
        return Charset::EucJp;
    return western && isSurelyAnsi(bytes) ? Charset::Ansi : Charset::Other;
}

}

Text decodeGuessed(std::string_view bytes)
{
    const Charset guess = guessCharset(bytes);
    return decodeAs(bytes, guess == Charset::Ascii ? Charset::Iso2022Jp : guess);
}

Text decodeCharset(std::string_view bytes, std::string_view label)
{
    const std::string name = cleanLabel(label);
    const Charset charset = charsetOf(name);
    Text text;
    if (decodeUtf16(bytes, name, text)) return text;
    const Charset sure = evidence(bytes, charset, name);
    if (sure != Charset::Other) return decodeAs(bytes, sure);
    if (charset == Charset::Other) {
        const bool escapes = looksLikeIso2022Jp(bytes) && !name.starts_with("iso-2022");
        return !escapes && decodeOther(bytes, name, text) ? text : decodeGuessed(bytes);
    }
    if (charset != Charset::Iso2022Jp && looksLikeIso2022Jp(bytes)) return decodeIso2022Jp(bytes);
    if (!contradicts(bytes, charset)) return decodeAs(bytes, charset);
    const Charset guess = guessCharset(bytes);
    const bool western = guess == Charset::Western && charset == Charset::Utf8;
    const bool better = charset == Charset::Ascii || western || !contradicts(bytes, guess);
    return better ? decodeGuessed(bytes) : decodeAs(bytes, charset);
}

}
