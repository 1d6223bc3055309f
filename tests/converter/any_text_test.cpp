// Any Japanese text is converted unchanged, under each correct label and in each
// transfer encoding; only ' becomes ’. The characters are chosen by row and cell of
// JIS X 0208, so that the bytes of each charset are computed without a table.
//
// TOLVEK_ROUNDS=10000 tries that many instead of the fixed 300.
#include "converter/conversion.h"
#include "converter/iso2022jp.h"

#include "converter/temp_reader.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <random>

namespace tolvek::test {
namespace {

struct Character {
    unsigned char row, cell; // 21h to 7Eh; row 0: ASCII
};
using Line = std::vector<Character>;

Text textOf(const Character& character)
{
    if (character.row == 0) return Text(1, static_cast<char16_t>(character.cell));
    return fromAnsi(ansiOfJis(character.row, character.cell));
}

bool isAssigned(const Character& character)
{
    return textOf(character).size() == 1 && textOf(character) != u"\u30FB";
}

class AnyText : public ::testing::Test {
protected:
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

    std::mt19937 random{19971126};
};

std::string expected(const Line& line)
{
    Text text;
    for (const Character& character : line)
        text += textOf(character) == u"'" ? Text(u"’") : textOf(character);
    return toUtf8(text);
}

std::string jis(const Line& line)
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

std::string eucJp(const Line& line)
{
    std::string bytes;
    for (const auto& [row, cell] : line) {
        if (row != 0) bytes += static_cast<char>(row | 0x80);
        bytes += static_cast<char>(row != 0 ? cell | 0x80 : cell);
    }
    return bytes;
}

std::string shiftJis(const Line& line)
{
    std::string bytes;
    for (const auto& [row, cell] : line)
        bytes += row != 0 ? ansiOfJis(row, cell) : std::string(1, static_cast<char>(cell));
    return bytes;
}

std::string utf8(const Line& line)
{
    return toUtf8(fromAnsi(shiftJis(line)));
}

struct Charset {
    const char* label;
    std::string (*encoded)(const Line&);
};
constexpr std::array<Charset, 4> kCharsets{
    {{"iso-2022-jp", jis}, {"euc-jp", eucJp}, {"shift_jis", shiftJis}, {"utf-8", utf8}}};

std::string base64(const std::string& bytes)
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

std::string inLines(const std::string& coded)
{
    std::string lines;
    for (std::size_t at = 0; at < coded.size(); at += 76)
        lines += coded.substr(at, 76) + "\n";
    return lines;
}

std::string quotedPrintable(const std::string& bytes)
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

std::string body(unsigned transfer, const std::string& bytes)
{
    if (transfer == 0) return "\n" + bytes;
    const bool coded = transfer == 1;
    return std::string("Content-Transfer-Encoding: ") + (coded ? "base64" : "quoted-printable") +
           "\n\n" + (coded ? inLines(base64(bytes)) : quotedPrintable(bytes));
}

TEST_F(AnyText, ComesThroughAsItIs)
{
    const TempFolder folder;
    const char* more = std::getenv("TOLVEK_ROUNDS");
    for (int round = more != nullptr ? std::atoi(more) : 300; round > 0; --round) {
        const Charset& charset = kCharsets[below(kCharsets.size())];
        const Line subject = line();
        std::string bytes, text;
        for (unsigned count = 1 + below(12); count > 0; --count) {
            const Line one = line();
            bytes += charset.encoded(one) + "\n";
            text += (text.empty() ? "" : "\n") + expected(one);
        }
        const std::string label = charset.label;
        const std::string mail = "From: a@example.com\nDate: 1 Jan 2000 1:00\nSubject: =?" + label +
                                 "?B?" + base64(charset.encoded(subject)) +
                                 "?=\nContent-Type: text/plain; charset=" + label + "\n" +
                                 body(below(3), bytes);
        writeBytes(folder / "box", mail);
        ASSERT_EQ(convertMailBox(folder / "box", folder / "Tolvek.Tmp").count, 1);
        const auto mails = readTemp(folder / "Tolvek.Tmp");
        ASSERT_EQ(mails[0].subject, expected(subject)) << mail;
        ASSERT_EQ(mails[0].text(), text) << mail;
    }
}

}
}
