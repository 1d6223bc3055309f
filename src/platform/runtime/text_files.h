// Sequential text files by file number, in code page 932.
//
// Numbers start at 1; a number stays in use until closeFile. Errors: reading past
// the end 62, missing file 53, missing folder 76, number not open 52, open in the
// other mode 54, already open 55, file not writable 75, device failure 57, disk
// full 61 (at write or close, once). After a failed read a file is at its end. In
// input mode a byte 1A ends the file.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>
#include <initializer_list>
#include <span>
#include <variant>

namespace tolvek {

Int16 freeFile(); // the lowest free number; error 67 if there is none
void openForInput(TextView path, Int16 number);
void openForOutput(TextView path, Int16 number); // truncates an existing file
bool endOfFile(Int16 number);

// The text up to CR or CR LF, without it; a lone LF is part of the text. A last
// line without CR is returned too.
Text lineInput(Int16 number);

// Input #: skips blanks, TABs and U+3000. A quoted item extends to the next quote,
// across commas and line ends; any other item extends to a comma, CR or the end and
// is trimmed at the right. Skips one delimiter. Error 62 if only blanks are left.
Text inputText(Int16 number);
// Input # into an integer: ends at a blank, TAB, comma, CR or the end. Empty or not
// a number: 0; out of range: error 6.
Int16 inputInt16(Int16 number);
std::int32_t inputInt32(Int16 number);

// Write #: texts in quotes with inner quotes unchanged, numbers as plain digits,
// separated by commas, with CR LF at the end.
using WriteItem = std::variant<TextView, int>;
void writeItems(Int16 number, std::span<const WriteItem> items);
void writeItems(Int16 number, std::initializer_list<WriteItem> items);
// Forces the written data to the disk; the file stays open.
void flushFile(Int16 number);

void closeFile(Int16 number); // does nothing if the number isn't open
void closeAllFiles();

}
