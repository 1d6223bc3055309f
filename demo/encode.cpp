#include "demo/encode.h"

#include "platform/runtime/codepage932.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <map>

namespace tolvek::sample {

namespace {

bool isLead(unsigned char c)
{
    return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
}

struct JisPair {
    char row, cell;
};

JisPair jisOf(unsigned char lead, unsigned char trail)
{
    // Each lead byte covers two JIS rows; the trail byte decides which.
    const int base = (lead - (lead >= 0xE0 ? 0xC1 : 0x81)) * 2 + 0x21;
    if (trail >= 0x9F) return {static_cast<char>(base + 1), static_cast<char>(trail - 0x7E)};
    return {static_cast<char>(base), static_cast<char>(trail - (trail >= 0x80 ? 0x20 : 0x1F))};
}

// Code page 932 has some kanji in rows that JIS lacks. Mail programs send them in the
// rows assigned by NEC, 89 to 92.
JisPair necPair(const std::string& pair)
{
    static const std::map<Text, JisPair> kRows = [] {
        std::map<Text, JisPair> rows;
        for (unsigned char lead = 0xED; lead <= 0xEE; ++lead)
            for (unsigned char trail = 0x40; trail <= 0xFC && trail != 0; ++trail)
                if (trail != 0x7F)
                    rows.emplace(
                        fromAnsi(std::string{static_cast<char>(lead), static_cast<char>(trail)}),
                        jisOf(lead, trail));
        return rows;
    }();
    const auto found = kRows.find(fromAnsi(pair));
    return found == kRows.end() ? JisPair{0x22, 0x2E} : found->second; // 〓
}

// Walks code page 932 bytes character by character.
template <class Single, class Pair> void walk(const std::string& ansi, Single single, Pair pair)
{
    for (std::size_t at = 0; at < ansi.size(); ++at) {
        const auto c = static_cast<unsigned char>(ansi[at]);
        if (!isLead(c) || at + 1 >= ansi.size()) {
            single(ansi[at]);
            continue;
        }
        ++at;
        pair(c >= 0xF0 ? necPair(ansi.substr(at - 1, 2))
                       : jisOf(c, static_cast<unsigned char>(ansi[at])));
    }
}

std::string iso2022Jp(const std::string& ansi)
{
    std::string out;
    std::string_view now = "\x1b(B";
    const auto change = [&](std::string_view escape) {
        if (now != escape) out += escape;
        now = escape;
    };
    walk(
        ansi,
        [&](char c) {
            const bool kana = static_cast<unsigned char>(c) >= 0xA1;
            change(kana ? "\x1b(I" : "\x1b(B");
            out += kana ? static_cast<char>(c & 0x7F) : c;
        },
        [&](JisPair pair) {
            change("\x1b$B");
            out.append({pair.row, pair.cell});
        });
    change("\x1b(B");
    return out;
}

std::string eucJp(const std::string& ansi)
{
    std::string out;
    walk(
        ansi,
        [&](char c) {
            if (static_cast<unsigned char>(c) >= 0xA1) out += '\x8E';
            out += c;
        },
        [&](JisPair pair) {
            out.append({static_cast<char>(pair.row | 0x80), static_cast<char>(pair.cell | 0x80)});
        });
    return out;
}

bool isAscii(TextView text)
{
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

}

std::string label(Charset charset)
{
    static constexpr std::array<const char*, 4> kLabels{"ISO-2022-JP", "Shift_JIS", "EUC-JP",
                                                        "UTF-8"};
    return kLabels[static_cast<std::size_t>(charset)];
}

std::string encoded(TextView text, Charset charset)
{
    switch (charset) {
    case Charset::Utf8:
        return toUtf8(text);
    case Charset::EucJp:
        return eucJp(toAnsi(text));
    case Charset::Iso2022Jp:
        return iso2022Jp(toAnsi(text));
    default:
        return toAnsi(text);
    }
}

std::string base64(std::string_view bytes)
{
    static constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t bits = 0;
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - at);
        for (std::size_t n = 0; n < 3; ++n)
            bits = bits << 8 | (n < count ? static_cast<unsigned char>(bytes[at + n]) : 0u);
        for (std::size_t n = 0; n < 4; ++n)
            out += n <= count ? kDigits[bits >> (18 - 6 * n) & 63] : '=';
    }
    return out;
}

std::string quotedPrintable(std::string_view line)
{
    std::string out;
    std::size_t width = 0;
    for (const char c : line) {
        std::array<char, 4> code{};
        const bool plain = c >= 0x20 && c < 0x7F && c != '=';
        std::snprintf(code.data(), code.size(), plain ? "%c" : "=%02X",
                      static_cast<unsigned char>(c));
        if (width > 70) out += "=\n", width = 0;
        out += code.data();
        width += plain ? 1 : 3;
    }
    return out;
}

std::string headerText(TextView text, Charset charset)
{
    constexpr std::size_t kWord = 12;
    if (isAscii(text)) return toUtf8(text);
    std::string out;
    for (std::size_t at = 0; at < text.size(); at += kWord)
        out += (at == 0 ? "=?" : "\n =?") + label(charset) + "?B?" +
               base64(encoded(text.substr(at, kWord), charset)) + "?=";
    return out;
}

}
