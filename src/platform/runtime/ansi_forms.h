// Converts text from outside, from a mail or a user, to the character forms of code
// page 932. Mails and typed text both pass through here, so that a typed condition
// matches the text of a mail.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Composes a character with its combining mark, replaces twins by their Windows
// forms and other spaces by U+0020, replaces a character that is an alternative
// code of one in the code page by that one, and removes invisible characters.
// Characters that the code page has are unchanged, except the no-break space; so
// are characters without any form there.
Text ansiForms(TextView text);

// ASCII, kana, common kanji and the punctuation between them: no combining marks,
// and unchanged by the conversion. They make up nearly all text, so they aren't
// looked up.
constexpr bool isOrdinary(char16_t c)
{
    return c < 0x80 || (c >= 0x3000 && c <= 0x301B) || (c >= 0x3041 && c <= 0x3096) ||
           (c >= 0x30A1 && c <= 0x30FC) || (c >= 0x4E00 && c <= 0x9FFF) ||
           (c >= 0xFF01 && c <= 0xFF5E);
}

}
