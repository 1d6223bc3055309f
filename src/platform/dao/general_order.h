// The General sort order, which applies to =, <>, ORDER BY and unique indexes.
//
// Equality: trailing U+0020 are dropped from both texts, each character is case-folded
// (Ａ to ａ, never to a), and the code units are compared. Case doesn't matter; width,
// kana type, accents, small kana and voicing do.
// Order: by key; if the keys are equal, by the folded texts, so that only equal texts
// compare as 0. A character has the weight of its folded form; otherwise equal texts
// could have different keys (s and ſ, k and the Kelvin sign).
//
// The key is made of the first 255 units without trailing U+0020. P: primary bytes;
// SEC, SMALL, MARKS: lists; REC: bytes. By type of character:
//   S: P, SEC 02.  I: P, SEC its own.  K: the same, SMALL its size, MARKS 1.
//   M: added to the last of SEC (none: a lone entry).
//   W: REC gets big-endian 8000h | (7 + 4 * size of SEC), 06, its code.
//   R: ー after a kana: P 7F, last primary byte & 87h; SEC 02; SMALL as before;
//      MARKS 3. Otherwise the primary before it once more, SEC its own, after
//      a kana SMALL as before and MARKS 2. At the start: P FF FF, SEC its own.
//   key = P 01 SEC (cut after its last value above 02); kana or REC: 01 01; kana:
//   pack(SMALL without trailing 3s) FF pack(MARKS without trailing 1s)
//   02 80 FF 80, and FF if REC; REC: 01 REC; 00.
#pragma once
#include "platform/runtime/text.h"

#include <string>

namespace tolvek {

// Less than, equal to or greater than 0.
int compareGeneral(TextView a, TextView b);

// The key described above, by which compareGeneral decides first.
std::string generalKey(TextView text);

}
