// Random Japanese texts as the mails of other programs bring them: characters chosen by
// row and cell of JIS X 0208, so that the bytes of each charset are computed without a
// table.
#pragma once
#include "converter/iso2022jp.h"
#include "platform/runtime/codepage932.h"
#include "platform/runtime/text.h"

#include <array>
#include <random>
#include <string>
#include <vector>

namespace tolvek::test {

struct Character {
    unsigned char row, cell; // 21h to 7Eh; row 0: ASCII
};
using Line = std::vector<Character>;

inline Text textOf(const Character& character)
{
    if (character.row == 0) return Text(1, static_cast<char16_t>(character.cell));
    return fromAnsi(ansiOfJis(character.row, character.cell));
}

inline bool isAssigned(const Character& character)
{
    return textOf(character).size() == 1 && textOf(character) != u"\u30FB";
}

// The same texts in every run.
class TextMaker {
public:
    unsigned below(unsigned end) { return static_cast<unsigned>(random() % end); }

    Character character()
    {
        // ASCII, symbols, letters, both kinds of kana, kanji of both levels.
        static constexpr std::array<unsigned char, 8> kRows{0,    0x21, 0x23, 0x24,
                                                            0x24, 0x25, 0x30, 0x50};
        for (;;) {
            unsigned char row = kRows[below(kRows.size())];
            if (row >= 0x30) row = static_cast<unsigned char>(row + below(row == 0x30 ? 31 : 36));
            const unsigned char cell = static_cast<unsigned char>(0x21 + below(94));
            if (row == 0 || isAssigned({row, cell})) return {row, cell};
        }
    }

    // It begins and ends with a kana, as blanks at the ends of a subject are trimmed.
    Line line()
    {
        Line made{{0x24, 0x22}};
        for (unsigned count = below(30); count > 0; --count)
            made.push_back(character());
        made.push_back({0x25, 0x22});
        return made;
    }

private:
    std::mt19937 random{19971126};
};

// As the converter gives it.
inline Text converted(const Line& line)
{
    Text text;
    for (const Character& character : line)
        text += textOf(character) == u"'" ? Text(u"’") : textOf(character);
    return text;
}

inline std::string jis(const Line& line)
{
    std::string bytes;
    bool wide = false;
    for (const auto& [row, cell] : line) {
        if (wide != (row != 0)) bytes += row != 0 ? "\x1b$B" : "\x1b(B";
        wide = row != 0;
        if (wide) bytes += static_cast<char>(row);
        bytes += static_cast<char>(cell);
    }
    return bytes + (wide ? "\x1b(B" : "");
}

inline std::string eucJp(const Line& line)
{
    std::string bytes;
    for (const auto& [row, cell] : line) {
        if (row != 0) bytes += static_cast<char>(row | 0x80);
        bytes += static_cast<char>(row != 0 ? cell | 0x80 : cell);
    }
    return bytes;
}

inline std::string shiftJis(const Line& line)
{
    std::string bytes;
    for (const auto& [row, cell] : line)
        bytes += row != 0 ? ansiOfJis(row, cell) : std::string(1, static_cast<char>(cell));
    return bytes;
}

inline std::string utf8(const Line& line)
{
    return toUtf8(fromAnsi(shiftJis(line)));
}

struct Charset {
    const char* label;
    std::string (*encoded)(const Line&);
};
inline constexpr std::array<Charset, 4> kCharsets{
    {{"iso-2022-jp", jis}, {"euc-jp", eucJp}, {"shift_jis", shiftJis}, {"utf-8", utf8}}};

inline std::string base64(const std::string& bytes)
{
    static constexpr char kDigits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        unsigned bits = 0;
        for (std::size_t next = at; next < at + 3; ++next)
            bits = bits << 8 | (next < bytes.size() ? static_cast<unsigned char>(bytes[next]) : 0u);
        for (int shift = 18; shift >= 0; shift -= 6)
            out += kDigits[bits >> shift & 63];
    }
    for (std::size_t missing = (3 - bytes.size() % 3) % 3; missing > 0; --missing)
        out[out.size() - missing] = '=';
    return out;
}

inline std::string inLines(const std::string& coded)
{
    std::string lines;
    for (std::size_t at = 0; at < coded.size(); at += 76)
        lines += coded.substr(at, 76) + "\n";
    return lines;
}

inline std::string quotedPrintable(const std::string& bytes)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string out;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n' || (byte > 0x20 && byte < 0x7F && c != '='))
            out += c;
        else
            (out += '=').append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
    }
    return out;
}

inline std::string body(unsigned transfer, const std::string& bytes)
{
    if (transfer == 0) return "\n" + bytes;
    const bool coded = transfer == 1;
    return std::string("Content-Transfer-Encoding: ") + (coded ? "base64" : "quoted-printable") +
           "\n\n" + (coded ? inLines(base64(bytes)) : quotedPrintable(bytes));
}

struct AnyMail {
    std::string bytes; // without a separator line
    Text subject;      // these two as the converter gives them
    std::vector<Text> lines;
};

// A mail with a random correct label and transfer encoding.
inline AnyMail anyMail(TextMaker& maker, unsigned lines, const std::string& date)
{
    const Charset& charset = kCharsets[maker.below(kCharsets.size())];
    const std::string label = charset.label;
    const Line subject = maker.line();
    AnyMail mail{{}, converted(subject), {}};
    std::string text;
    for (; lines > 0; --lines) {
        const Line line = maker.line();
        text += charset.encoded(line) + "\n";
        mail.lines.push_back(converted(line));
    }
    mail.bytes = "From: a@example.com\nDate: " + date + "\nSubject: =?" + label + "?B?" +
                 base64(charset.encoded(subject)) +
                 "?=\nContent-Type: text/plain; charset=" + label + "\n" +
                 body(maker.below(3), text);
    return mail;
}

}
