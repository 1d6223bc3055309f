#include "converter/charset_decode.h"

#include "converter/iso2022jp.h"
#include "platform/runtime/codepage932.h"

#include <unicode/ucnv.h>

#include <memory>

namespace tolvek {

namespace {

constexpr std::string_view kBadPlace = "\x81\xAC"; // 〓
constexpr const char* kWestern = "windows-1252";

// Not left to ICU: double bytes take code page 932's table, as in ISO-2022-JP, so that
// a character becomes the same code point from either charset, and one that the temp
// file can hold.
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
            // half-width kana have the same byte in code page 932
            run += bytes[1];
        else if (at(0) == 0x8F && high(at(1)) && high(at(2)))
            // JIS X 0212 isn't in code page 932, so the run before it is converted
            // first.
            text += fromAnsi(run) + textOfJis0212(at(1) & 0x7F, at(2) & 0x7F), run.clear(),
                length = 3;
        else if (high(at(0)) && high(at(1)))
            run += ansiOfJis(at(0) & 0x7F, at(1) & 0x7F);
        else
            // One byte only, so that decoding can fall into step again.
            run += kBadPlace, length = 1;
        bytes.remove_prefix(length);
    }
    return text + fromAnsi(run);
}

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

// Null for a name that ICU doesn't know.
Converter opened(const std::string& name)
{
    UErrorCode status = U_ZERO_ERROR;
    return Converter(ucnv_open(name.c_str(), &status), &ucnv_close);
}

// Through a small buffer: the whole result would need to be sized in advance.
Text converted(std::string_view bytes, UConverter* converter)
{
    constexpr std::size_t kRoom = 4096;
    Text text;
    char16_t room[kRoom];
    const char* source = bytes.data();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        char16_t* target = room;
        ucnv_toUnicode(converter, &target, room + kRoom, &source, bytes.data() + bytes.size(),
                       nullptr, true, &status);
        text.append(room, static_cast<std::size_t>(target - room));
    }
    return text;
}

}

Text decodeAs(std::string_view bytes, Charset charset)
{
    switch (charset) {
    case Charset::Western:
        return decodeNamed(bytes, kWestern);
    case Charset::Iso2022Jp:
        return decodeIso2022Jp(isAscii(bytes) ? restoreEscapes(bytes) : std::string(bytes));
    case Charset::Utf8:
        return fromUtf8(bytes);
    case Charset::EucJp:
        return decodeEucJp(bytes);
    case Charset::Ascii:
    case Charset::Ansi:
    case Charset::Other:
        break; // plain ASCII is within the code page, and an unknown charset is most likely it
    }
    return fromAnsi(bytes);
}

bool isKnownName(const std::string& name)
{
    return opened(name) != nullptr;
}

Text decodeNamed(std::string_view bytes, const std::string& name)
{
    const Converter converter = opened(name);
    return converter ? converted(bytes, converter.get()) : fromAnsi(bytes);
}

bool endsWithItsLines(const std::string& name)
{
    const Converter converter = opened(name);
    if (!converter) return false;
    const UConverterType type = ucnv_getType(converter.get());
    // The other types have shift states (ISO-2022, HZ, UTF-7) or units wider than a
    // byte.
    return type == UCNV_SBCS || type == UCNV_MBCS || type == UCNV_LATIN_1;
}

}
