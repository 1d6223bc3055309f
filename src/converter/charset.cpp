#include "converter/charset.h"

#include "converter/charset_decode.h"
#include "converter/charset_label.h"
#include "converter/iso2022jp.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr std::size_t kPiece = 1 << 18; // bytes

// The charset that was decided on; with Other, under the name that the library knows.
struct Reading {
    Charset charset;
    std::string name;
};

bool contradicts(std::string_view bytes, Charset label)
{
    switch (label) {
    case Charset::Iso2022Jp:
        // 8-bit bytes without any escape: the label of another charset.
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
        break; // always contradicted: the bytes decide
    }
    return true;
}

// The charset that is certain whatever the label says; Other when none is.
Charset evidence(std::string_view bytes, Charset label, const std::string& name)
{
    if (label == Charset::Iso2022Jp || isAscii(bytes) || isWideName(name)) return Charset::Other;
    // Two-byte characters of Eastern charsets can form valid UTF-8 by chance, so under
    // their labels more evidence is needed.
    const bool eastern = label != Charset::Other || isEasternName(name);
    if (label != Charset::Utf8 && isSurelyUtf8(bytes, eastern)) return Charset::Utf8;
    // EUC-JP overrides only a Western or a Shift_JIS label, and only if both the
    // strict test and the guess agree.
    const bool western = label == Charset::Other && isWesternName(name);
    if ((western || label == Charset::Ansi) && isSurelyEucJp(bytes) &&
        guessCharset(bytes) == Charset::EucJp)
        return Charset::EucJp;
    return western && isSurelyAnsi(bytes) ? Charset::Ansi : Charset::Other;
}

// By the byte order mark, else by which byte of the pairs is more often zero (ASCII)
// or 30h (kana).
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
    // ASCII goes to the JIS decoder, which restores escapes that a gateway stripped.
    return guess == Charset::Ascii ? Charset::Iso2022Jp : guess;
}

// With one of our own labels and no certain evidence against it.
Charset byLabel(std::string_view bytes, Charset label)
{
    if (label != Charset::Iso2022Jp && looksLikeIso2022Jp(bytes)) return Charset::Iso2022Jp;
    if (!contradicts(bytes, label)) return label;
    const Charset guess = guessCharset(bytes);
    // contradicts() is always true for Western, so that guess needs a condition of its
    // own.
    const bool western = guess == Charset::Western && label == Charset::Utf8;
    const bool better = label == Charset::Ascii || western || !contradicts(bytes, guess);
    return better ? guessed(bytes) : label;
}

Reading byName(std::string_view bytes, const std::string& name)
{
    // ISO-2022-KR and -CN have escapes of their own; under any other name escapes mean
    // JIS.
    const bool escapes = looksLikeIso2022Jp(bytes) && !name.starts_with("iso-2022");
    if (escapes || !isKnownName(name)) return {guessed(bytes), {}};
    return isLatin1Name(name) ? Reading{Charset::Western, {}} : Reading{Charset::Other, name};
}

Reading readingOf(std::string_view bytes, std::string_view label)
{
    const std::string name = cleanLabel(label);
    // UTF-16 is decided first: none of the tests for bytes understands it.
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
    // A charset with shift states, or with LF inside a character, is converted at
    // once.
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
