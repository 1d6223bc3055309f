// Text brought into the form that the temp file and the store bear.
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>

namespace tolvek {

// One line: controls and line ends become blanks (a byte 1A would end the temp
// file for its reader, a NUL the text), the single quote becomes ’ as it would
// end a quoted value of the store, invisible characters go, a character and
// its combining mark become one, and characters that other tables give for one
// of ours become ours.
// What still has no form in code page 932 gets the nearest one: ü is u, ß is
// ss; private characters become 〓.
Text plainLine(TextView text);

// The same without nearest forms, for what must not become another one.
Text foldedLine(TextView text);

// The same for each line of a text, whatever its line ends are, appended in code
// page 932 with a LF each. A mail may hold so much text that it is kept like this.
void appendPlainLines(std::string& lines, TextView text);

// Nothing but blanks, narrow or wide, and the line ends of such lines.
bool isBlankAnsi(std::string_view lines);
std::string withoutBlanks(std::string_view lines);

// The longest front of code page 932 bytes with at most `limit` bytes that
// doesn't end in half a character.
std::string_view wholePrefix(std::string_view ansi, std::size_t limit);

}
