// Sequential text files by file number, code page 932 both ways.
//
// Numbers run from 1; a number stays taken until closeFile. Reading past the
// end is 62, a missing file 53, a missing folder 76, a number not open 52, one open
// the other way 54, already open 55, an unwritable file 75, a failing device 57, a full
// disk 61 (at write or close, once). After a failed read a file is at its end.
// In input mode a byte 1A ends the file.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>
#include <initializer_list>
#include <span>
#include <variant>

namespace tolvek {

Int16 freeFile(); // the lowest free number; none left: 67
void openForInput(TextView path, Int16 number);
void openForOutput(TextView path, Int16 number); // empties an existing file
bool endOfFile(Int16 number);

// Up to CR or CR LF, both dropped; a lone LF stays in the text. A last line
// without CR is returned.
Text lineInput(Int16 number);

// Input #: blanks, TABs and U+3000 are skipped; a quoted item runs to the next
// quote over commas and line ends; any other to a comma, CR or the end,
// trimmed at the right. One delimiter is dropped. Only blanks left: 62.
Text inputText(Int16 number);
// Input # into an integer: ends at a blank, TAB, comma, CR or the end. Empty
// or no number: 0; out of range: 6.
Int16 inputInt16(Int16 number);
std::int32_t inputInt32(Int16 number);

// Write #: texts in quotes with inner quotes as they are, numbers as plain
// digits, commas between, CR LF at the end.
using WriteItem = std::variant<TextView, int>;
void writeItems(Int16 number, std::span<const WriteItem> items);
void writeItems(Int16 number, std::initializer_list<WriteItem> items);
void printLine(Int16 number, TextView line); // the line and CR LF
// Forces what was written to the disk; the file stays open.
void flushFile(Int16 number);

void closeFile(Int16 number); // a number not open: nothing
void closeAllFiles();

}
