#include "platform/runtime/codepage932.h"

#include "platform/runtime/runtime_error.h"

#include <array>
#include <bitset>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>
#include <unicode/utf16.h>

namespace tolvek {

namespace {

constexpr std::uint16_t kGetaCode = 0x81AC; // 〓
constexpr char16_t kNoCharacter = u'\u30FB';

// Mails in UTF-8 and other systems' input methods use these for characters that the
// code page maps to another code point.
constexpr char16_t kTwins[][2] = {
    {u'\u301C', u'\uFF5E'}, {u'\u2016', u'\u2225'}, {u'\u2212', u'\uFF0D'},
    {u'\u00A2', u'\uFFE0'}, {u'\u00A3', u'\uFFE1'}, {u'\u00AC', u'\uFFE2'},
};

// One entry for each code unit and each code. Built once, so that the texts of a
// whole archive can be measured without calling ICU for each.
struct Tables {
    std::array<std::uint16_t, 0x10000> code; // below 100h: a single byte
    std::array<char16_t, 0x10000> character; // by code
    std::bitset<0x10000> fits;               // has a form of its own
};

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter openConverter()
{
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open("ibm-943_P15A-2003", &status), &ucnv_close);
    if (U_SUCCESS(status)) {
        ucnv_setFallback(converter.get(), false);
        ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                            &status);
        ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                              &status);
    }
    if (U_FAILURE(status))
        throw RuntimeError(5, u"コード ページ 932 の変換表が見つかりません。", nullptr);
    return converter;
}

void fillDoubleBytes(Tables& tables, UConverter* converter)
{
    for (unsigned code = 0x8140; code <= 0xFCFC; ++code) {
        if (!isLeadByte(code >> 8) || !isTrailByte(code & 0xFF)) continue;
        const char bytes[] = {static_cast<char>(code >> 8), static_cast<char>(code)};
        char16_t units[4];
        UErrorCode status = U_ZERO_ERROR;
        if (ucnv_toUChars(converter, units, 4, bytes, 2, &status) == 1 && U_SUCCESS(status))
            tables.character[code] = units[0];
    }
}

// Several codes may mean the same character; ICU returns the one that Windows
// returns.
void fillCodes(Tables& tables, UConverter* converter)
{
    for (unsigned unit = 0x80; unit < 0x10000; ++unit) {
        if (U16_IS_SURROGATE(unit)) continue;
        const auto c = static_cast<char16_t>(unit);
        char bytes[8];
        UErrorCode status = U_ZERO_ERROR;
        if (ucnv_fromUChars(converter, bytes, 8, &c, 1, &status) != 2 || U_FAILURE(status))
            continue; // includes characters that ICU silently drops
        const unsigned lead = static_cast<unsigned char>(bytes[0]);
        const unsigned code = lead << 8 | static_cast<unsigned char>(bytes[1]);
        // excludes U+F86F, which converts back to another character
        if (tables.character[code] == c) {
            tables.code[unit] = static_cast<std::uint16_t>(code);
            tables.fits.set(unit);
        }
    }
}

void setSingleByte(Tables& tables, unsigned byte, char16_t c)
{
    tables.character[byte] = c;
    tables.code[c] = static_cast<std::uint16_t>(byte);
    tables.fits.set(c);
}

void fillSingleBytes(Tables& tables)
{
    for (unsigned byte = 0; byte < 0x80; ++byte)
        setSingleByte(tables, byte, static_cast<char16_t>(byte));
    for (unsigned byte = 0xA1; byte <= 0xDF; ++byte)
        setSingleByte(tables, byte, static_cast<char16_t>(0xFF61 + byte - 0xA1));
    // The five single bytes that ICU maps differently from Windows.
    setSingleByte(tables, 0x80, u'\u0080');
    setSingleByte(tables, 0xA0, u'\u00A0');
    setSingleByte(tables, 0xFD, u'\uF8F1');
    setSingleByte(tables, 0xFE, u'\uF8F2');
    setSingleByte(tables, 0xFF, u'\uF8F3');
}

// Twins get the code of their Windows form but don't count as fitting the code page.
void fillTwins(Tables& tables)
{
    for (const auto& [twin, own] : kTwins)
        tables.code[twin] = tables.code[own];
}

std::unique_ptr<Tables> makeTables()
{
    auto tables = std::make_unique<Tables>();
    tables->code.fill(kGetaCode);
    tables->character.fill(kNoCharacter);
    const Converter converter = openConverter();
    fillDoubleBytes(*tables, converter.get());
    fillCodes(*tables, converter.get());
    fillSingleBytes(*tables);
    fillTwins(*tables);
    return tables;
}

const Tables& tables()
{
    static const std::unique_ptr<Tables> made = makeTables();
    return *made;
}

// A surrogate pair is one character, and the code page never has it.
std::uint16_t takeCode(const Tables& made, TextView text, std::size_t& at)
{
    const char16_t c = text[at++];
    if (U16_IS_LEAD(c) && at < text.size() && U16_IS_TRAIL(text[at])) ++at;
    return made.code[c];
}

constexpr std::size_t byteCount(std::uint16_t code)
{
    return code < 0x100 ? 1 : 2;
}

void append(std::string& bytes, std::uint16_t code)
{
    if (code >= 0x100) bytes += static_cast<char>(code >> 8);
    bytes += static_cast<char>(code);
}

// A lead byte that isn't followed by a trail byte counts alone, so that a line end
// or a quote after it isn't swallowed.
unsigned takeCode(std::string_view bytes, std::size_t& at)
{
    const unsigned first = static_cast<unsigned char>(bytes[at++]);
    if (!isLeadByte(first) || at >= bytes.size()) return first;
    const unsigned second = static_cast<unsigned char>(bytes[at]);
    if (!isTrailByte(second)) return first;
    ++at;
    return first << 8 | second;
}

}

std::string toAnsi(TextView text)
{
    const Tables& made = tables();
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (std::size_t at = 0; at < text.size();)
        append(bytes, takeCode(made, text, at));
    return bytes;
}

Text fromAnsi(std::string_view bytes)
{
    const Tables& made = tables();
    Text text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();)
        text += made.character[takeCode(bytes, at)];
    return text;
}

bool fitsAnsi(TextView text)
{
    const Tables& made = tables();
    for (const char16_t c : text)
        if (!made.fits[c]) return false;
    return true;
}

char16_t ownForm(char16_t c)
{
    for (const auto& [twin, own] : kTwins)
        if (c == twin) return own;
    return c;
}

Text keptToAnsi(TextView text)
{
    const Tables& made = tables();
    Text kept;
    kept.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char16_t c = text[at];
        const std::uint16_t code = takeCode(made, text, at);
        kept += made.fits[c] ? c : made.character[code];
    }
    return kept;
}

std::string ansiPrefix(TextView text, std::size_t limit)
{
    const Tables& made = tables();
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const std::uint16_t code = takeCode(made, text, at);
        if (bytes.size() + byteCount(code) > limit) break;
        append(bytes, code);
    }
    return bytes;
}

int ansiLength(TextView text)
{
    const Tables& made = tables();
    std::size_t total = 0;
    for (std::size_t at = 0; at < text.size();)
        total += byteCount(takeCode(made, text, at));
    return static_cast<int>(total);
}

}
