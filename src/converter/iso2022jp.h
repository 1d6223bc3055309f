// ISO-2022-JP as it was really sent.
//
// Beside the legal escapes: half-width kana by ESC ( I, by SO/SI and as bare
// 8-bit bytes, ESC ( H for JIS-Roman, JIS X 0212, NEC's row 13 and the kanji
// that NEC selected, no return to ASCII at the end of a line, and escapes that
// a gateway has stripped. Double bytes go through code page 932's table, whose
// rows agree with JIS's; so JIS-style twins never come up.
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>

namespace tolvek {

Text decodeIso2022Jp(std::string_view bytes);

// An escape to or from JIS, or SO with an SI behind it.
bool looksLikeIso2022Jp(std::string_view bytes);

// "$B...(B" in plain sight with its ESC put back; other text as it is.
std::string restoreEscapes(std::string_view bytes);

// A pair of JIS X 0208 bytes (21-7E) as code page 932 bytes.
std::string ansiOfJis(unsigned char row, unsigned char cell);
// A pair of JIS X 0212 bytes (21-7E).
Text textOfJis0212(unsigned char row, unsigned char cell);

}
