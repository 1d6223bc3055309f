// The settings file: sections and keys in a text file in code page 932.
//
// Order, comments, unknown keys, spacing and the case of names are preserved.
// Sections and keys are found without regard to case. Every write replaces the
// whole file atomically (side file, flush, replace, flush of the folder), so after
// a crash either the old or the new file is complete.
#pragma once
#include "platform/runtime/profile_text.h"

namespace tolvek {

// A snapshot of a file, for reading many keys.
class Profile {
public:
    explicit Profile(TextView file);
    // As getProfileString does for this file.
    Text get(TextView section, TextView key, TextView fallback, int size,
             int* returnedLength = nullptr) const;

private:
    std::optional<ProfileText> text_;
};

// Returns the value or `fallback` as the classic platform's profile call does:
// without outer blanks and without one enclosing pair of quotes, cut to size - 1
// bytes of code page 932 with no half character at the end. `returnedLength`, if
// given, receives the length in bytes. A missing or unreadable file gives the
// fallback.
Text getProfileString(TextView section, TextView key, TextView fallback, int size, TextView file,
                      int* returnedLength = nullptr);

// Replaces or adds the key; makes the file and the section if missing. Returns
// false and changes nothing if the file can't be written or is read-only (by its
// mode, which the replacing rename would ignore). An equal value isn't written
// again. A value ends at its first line end or NUL, where a reader would end it.
// Outer blanks, which a reader drops, aren't written.
bool writeProfileString(TextView section, TextView key, TextView value, TextView file);

}
