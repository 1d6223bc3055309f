// Small helpers for bytes and for the ASCII part of a text. They ignore the locale:
// header names and labels are ASCII by definition.
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

std::string lowerAscii(std::string_view text);
bool equalsAscii(std::string_view a, std::string_view b); // ignoring case, ASCII only

// Called for every character of a mail, so they are inline.
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

// Removes the first line, with its LF, from the front of the text and returns it
// without the LF.
std::string_view takeLine(std::string_view& text);

// All lines of a text; a final LF starts no further line.
std::vector<std::string_view> linesOf(std::string_view text);

// 0 to 15, or -1.
int hexValue(char32_t c);

// The units below 80h as bytes; others are left out.
std::string asciiOnly(TextView text);

}
