// Small helpers over bytes and over the ASCII part of a text. Locale plays no
// part: header names and labels are ASCII by definition.
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

std::string lowerAscii(std::string_view text);
bool equalsAscii(std::string_view a, std::string_view b); // A-Z and a-z are one

// Asked for every character of a mail, so they are written out here.
constexpr bool isAsciiSpace(char32_t c) // blank, TAB, CR, LF
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

constexpr bool isAsciiDigit(char32_t c)
{
    return c >= '0' && c <= '9';
}

constexpr bool isAsciiLetter(char32_t c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string_view trimSpace(std::string_view text);
TextView trimSpace(TextView text);

// Pieces between runs of the separators; no empty pieces.
std::vector<std::string> words(std::string_view text, std::string_view separators);

// The first line of a text whose line ends are LF; it is taken off with its end.
std::string_view takeLine(std::string_view& text);

// All of them; no piece after a last LF.
std::vector<std::string_view> linesOf(std::string_view text);

// 0 to 15, or -1.
int hexValue(char32_t c);

// The units below 80h as bytes; others are left out.
std::string asciiOnly(TextView text);

}
