// The form of a text in which letters are compared: compatibility forms, case, width,
// kana type and old kanji forms are folded, and line ends don't separate words.
//
//     ＡＢＣ abc    カナ ｶﾅ かな    髙﨑 高崎    圖書舘 図書館    don’t don't
//
// A run of blanks is one U+0020. A single line end between two characters of a script
// without blanks is nothing at all: mails of that time break their lines in the middle of
// a word.
#pragma once
#include "platform/runtime/text.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tolvek {

Text folded(TextView text);
void appendFolded(Text& to, TextView text);

// With the way back: unit i of `text` came from the units [begin[i], end[i]) of the source.
struct FoldedText {
    Text text;
    std::vector<std::uint32_t> begin, end;
};
FoldedText foldedWithOrigin(TextView text);

}
