#include "converter/charset.h"

#include "converter/charset_decode.h"
#include "converter/charset_label.h"
#include "converter/iso2022jp.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr std::size_t kPiece = 1 << 18; // bytes

// What bytes are in; under Other by that name of the library's.
struct Reading {
    Charset charset;
    std::string name;
};

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
    case Charset::Ascii:
    case Charset::Western:
    case Charset::Other:
        break; // a label that any bytes contradict
    }
    return true;
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

// By its mark, else by the half of the bytes that are zero or the same high byte
// of kana.
Reading orderOfUtf16(std::string_view bytes)
{
    if (bytes.starts_with("\xFF\xFE")) return {Charset::Other, "utf-16le"};
    if (bytes.starts_with("\xFE\xFF")) return {Charset::Other, "utf-16be"};
    std::size_t high[2] = {0, 0};
    for (std::size_t at = 0; at < bytes.size(); ++at)
        if (bytes[at] == 0 || bytes[at] == 0x30) ++high[at % 2];
    return {Charset::Other, high[1] > high[0] ? "utf-16le" : "utf-16be"};
}

Charset guessed(std::string_view bytes)
{
    const Charset guess = guessCharset(bytes);
    return guess == Charset::Ascii ? Charset::Iso2022Jp : guess;
}

// Under one of our labels; nothing speaks for certain against it.
Charset byLabel(std::string_view bytes, Charset label)
{
    if (label != Charset::Iso2022Jp && looksLikeIso2022Jp(bytes)) return Charset::Iso2022Jp;
    if (!contradicts(bytes, label)) return label;
    const Charset guess = guessCharset(bytes);
    const bool western = guess == Charset::Western && label == Charset::Utf8;
    const bool better = label == Charset::Ascii || western || !contradicts(bytes, guess);
    return better ? guessed(bytes) : label;
}

Reading byName(std::string_view bytes, const std::string& name)
{
    const bool escapes = looksLikeIso2022Jp(bytes) && !name.starts_with("iso-2022");
    if (escapes || !isKnownName(name)) return {guessed(bytes), {}};
    return isLatin1Name(name) ? Reading{Charset::Western, {}} : Reading{Charset::Other, name};
}

Reading readingOf(std::string_view bytes, std::string_view label)
{
    const std::string name = cleanLabel(label);
    if (isUtf16Name(name)) return orderOfUtf16(bytes);
    const Charset charset = charsetOf(name);
    const Charset sure = evidence(bytes, charset, name);
    if (sure != Charset::Other) return {sure, {}};
    return charset == Charset::Other ? byName(bytes, name) : Reading{byLabel(bytes, charset), {}};
}

Text decoded(std::string_view bytes, const Reading& reading)
{
    if (reading.charset != Charset::Other) return decodeAs(bytes, reading.charset);
    Text text = decodeNamed(bytes, reading.name);
    if (text.starts_with(u'\uFEFF')) text.erase(0, 1);
    return text;
}

}

Text decodeGuessed(std::string_view bytes)
{
    return decodeAs(bytes, guessed(bytes));
}

Text decodeCharset(std::string_view bytes, std::string_view label)
{
    return decoded(bytes, readingOf(bytes, label));
}

void decodeInPieces(std::string_view bytes, std::string_view label,
                    const std::function<void(TextView)>& take)
{
    const Reading reading = readingOf(bytes, label);
    const bool cut = bytes.size() > kPiece &&
                     (reading.charset != Charset::Other || endsWithItsLines(reading.name));
    while (!bytes.empty()) {
        const std::size_t end = cut ? bytes.find('\n', kPiece) : std::string_view::npos;
        const std::string_view piece = bytes.substr(0, end == bytes.npos ? end : end + 1);
        take(decoded(piece, reading));
        bytes.remove_prefix(piece.size());
    }
}

}
