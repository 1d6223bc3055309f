// The settings profile: sections and keys in a text file of code page 932.
//
// Order, comments, unknown keys, spacing and the case of names are preserved;
// sections and keys are found without regard to case. Every write replaces the
// whole file atomically (side file, flush, replace, flush of the folder), so a
// crash leaves the old or the new file, never half of one.
#pragma once
#include "platform/runtime/profile_text.h"

namespace tolvek {

// A file as it is at one moment, for the reading of many keys.
class Profile {
public:
    explicit Profile(TextView file);
    // As getProfileString of that file.
    Text get(TextView section, TextView key, TextView fallback, int size,
             int* returnedLength = nullptr) const;

private:
    std::optional<ProfileText> text_;
};

// The value or `fallback`, as the platform's profile call gives them: outer
// blanks and one enclosing pair of quotes go; cut to size - 1 bytes of code
// page 932, no half character at the end. `returnedLength` (if given): its
// length in bytes. A missing or unreadable file gives the fallback.
Text getProfileString(TextView section, TextView key, TextView fallback, int size, TextView file,
                      int* returnedLength = nullptr);

// Replaces or adds the key; file and section are made if missing. False when
// the file is read-only (by its mode, which a replacing rename would pass
// over) or can't be written; then nothing has changed. A value that stands
// there already isn't written again. A value ends at its first line end or NUL,
// where a reader would end it; outer blanks, which a reader drops, aren't written.
bool writeProfileString(TextView section, TextView key, TextView value, TextView file);

}
