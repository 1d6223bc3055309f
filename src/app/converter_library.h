// The converter library "Tolvek", loaded at run time from the program's own
// folder, and the fixed records through which it takes its texts.
//
// Loading happens at the first call; a missing library is error 53 with its
// name, at each call anew.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

// A path record holds 256 bytes, a text record 4608, both in the encoding the
// library expects (paths in the file system's own); a NUL ends the text,
// blanks fill the rest. A path that doesn't fit is error 75. This program's own
// library takes the paths of a mail box at any length, past the records.
inline constexpr int kPathRecordSize = 256;
inline constexpr int kTextRecordSize = 4608;

// The three exports, as the library's callers use them.
struct ConverterLibrary {
    // list, mail and temp file; count of mails; status (0: converted). The own
    // library's disk failures, which every box would meet, are thrown.
    std::function<void(const Text&, const Text&, const Text&, Int16&, Int16&)> Tolvek_Edit;
    // friend book folder's path as the friend import gives it, temp file, count, status.
    std::function<void(const Text&, const Text&, Int16&, Int16&)> TolvekFriend_Edit;
    // text in, text out, length in characters.
    std::function<void(const Text&, Text&, Int16&)> Mail_StrChange;
    // Error 75 for a path that Tolvek_Edit can't take; no function: it takes any.
    std::function<void(const Text&)> requirePath;
};

// The library in use: the loaded one, or the one that a test has put in place.
ConverterLibrary& converterLibrary();
// For tests; a default-constructed one gives the loaded one back, loaded anew.
void setConverterLibrary(ConverterLibrary replacement);

}
