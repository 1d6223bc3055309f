// Converts text to the form that the temp file and the store can hold.
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>

namespace tolvek {

// One line. Controls and line ends become blanks: a byte 1A would end the temp file
// for its reader, a NUL the text. The single quote becomes ’, as it would end a quoted
// value of the store. Invisible characters are removed, a character and its combining
// mark are composed, and the variants that other tables give for characters of the
// code page become these. What still has no form in code page 932 gets the nearest
// one: ü is u, ß is ss; private characters become 〓.
Text plainLine(TextView text);

// The same without nearest forms, for text that must not turn into another: an
// address.
Text foldedLine(TextView text);

// The same for each line of a text, with any line ends, appended in code page 932 with
// one LF each. That form takes little memory: a mail may contain much text.
void appendPlainLines(std::string& lines, TextView text);

// Whether there is nothing but blanks, narrow or wide, and line ends.
bool isBlankAnsi(std::string_view lines);
std::string withoutBlanks(std::string_view lines);

// The longest prefix of code page 932 bytes, at most `limit`, that doesn't end in half
// a character.
std::string_view wholePrefix(std::string_view ansi, std::size_t limit);

}
