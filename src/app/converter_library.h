// The converter library "Tolvek", loaded at run time from the program's own folder, and
// the fixed-size records that carry its texts.
//
// The library is loaded at the first call. If it is missing, every call fails with
// error 53 and the file's name.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

// A path record holds 256 bytes, a text record 4608. Paths are in the file system's
// encoding, texts in code page 932. A NUL ends the text and blanks fill the rest. A
// path that doesn't fit is error 75. This program's own library takes the paths of a
// mail box at any length, without records.
inline constexpr int kPathRecordSize = 256;
inline constexpr int kTextRecordSize = 4608;
// The lines that the reader of a mail gathers for one text record at most; the
// converter breaks its lines so that no block grows beyond the record.
inline constexpr int kTextRecordLines = 33;

// The three exports, as the library's callers use them.
struct ConverterLibrary {
    // List file, mail file and temp file; number of mails; status (0: converted).
    // Throws the disk failures of the own library that every box would meet.
    std::function<void(const Text&, const Text&, const Text&, Int16&, Int16&)> Tolvek_Edit;
    // Path of the friend book folder as the friend import passes it; temp file; number
    // of friends; status. Throws what keeps the own library from writing the temp file.
    std::function<void(const Text&, const Text&, Int16&, Int16&)> TolvekFriend_Edit;
    // Input, output, length of the output in characters.
    std::function<void(const Text&, Text&, Int16&)> Mail_StrChange;
    // Throws error 75 for a path that Tolvek_Edit can't take. Empty: every path is
    // accepted.
    std::function<void(const Text&)> requirePath;
};

// The library in use: the loaded one, or a replacement set by a test.
ConverterLibrary& converterLibrary();
// For tests. A default-constructed argument restores the real library and loads it
// again.
void setConverterLibrary(ConverterLibrary replacement);

}
