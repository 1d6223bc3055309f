// Text from elsewhere, a mail's or a user's, with each character in the form that
// code page 932 has for it. Both go through here, so that a condition that was
// typed finds what a mail brought.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// A character and its combining mark become one, twins get their Windows forms,
// blanks of other widths become blanks, a character that is another code for one
// of ours becomes ours, invisible ones go. What the code page has stays as it is,
// but for a no-break space; so does what has no form at all.
Text ansiForms(TextView text);

// ASCII, kana, the kanji of every day and what stands between them: no marks,
// and forms of their own. Nearly all of a text, so they aren't looked up.
constexpr bool isOrdinary(char16_t c)
{
    return c < 0x80 || (c >= 0x3000 && c <= 0x301B) || (c >= 0x3041 && c <= 0x3096) ||
           (c >= 0x30A1 && c <= 0x30FC) || (c >= 0x4E00 && c <= 0x9FFF) ||
           (c >= 0xFF01 && c <= 0xFF5E);
}

}
