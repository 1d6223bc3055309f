// The converter library "Tolvek", loaded at run time from the program's own folder, and
// the fixed-size records that carry its texts.
//
// The library is loaded at the first call. If it is missing, every call fails with
// error 53 and the file's name.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <functional>
#include <vector>

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

// What the own library says of a box beyond count and status. Another library says
// nothing: `given` is false then.
struct ConverterNotes {
    enum class Why { NoDate = 1, StillGrowing = 2, UnreadableFile = 3, NothingThere = 4 };
    struct LeftOut {
        Why why;
        Text what; // a mail's first header lines, separated by LF, or a file's name
    };
    bool given = false;
    int mails = 0; // that the box holds
    std::vector<LeftOut> leftOut;
};

// The exports, as the library's callers use them.
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
    // Tolvek_Edit with the library's notes. Empty: the library has none to give.
    std::function<void(const Text&, const Text&, const Text&, Int16&, Int16&, ConverterNotes&)>
        Tolvek_EditNoted;
};

// The library in use: the loaded one, or a replacement set by a test.
ConverterLibrary& converterLibrary();

}
