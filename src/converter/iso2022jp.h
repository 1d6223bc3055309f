// ISO-2022-JP as it was really sent.
//
// Beyond the legal escapes it covers: half-width kana by ESC ( I, by SO/SI and as bare
// 8-bit bytes, ESC ( H for JIS-Roman, JIS X 0212, NEC row 13 and NEC-selected kanji, a
// missing return to ASCII at the end of a line, and escapes whose ESC a gateway has
// stripped. Double bytes use code page 932's table, whose rows match those of JIS, so
// the second code points that JIS tables have for some symbols never occur.
#pragma once
#include "platform/runtime/text.h"

#include <string>
#include <string_view>

namespace tolvek {

Text decodeIso2022Jp(std::string_view bytes);

// Whether there is an escape to or from JIS, or an SO followed by an SI.
bool looksLikeIso2022Jp(std::string_view bytes);

// Restores the ESC of "$B...(B" in the text; other text is unchanged.
std::string restoreEscapes(std::string_view bytes);

// Converts a pair of JIS X 0208 bytes (21-7E) to code page 932.
std::string ansiOfJis(unsigned char row, unsigned char cell);
// Converts a pair of JIS X 0212 bytes (21-7E).
Text textOfJis0212(unsigned char row, unsigned char cell);

}
