// Kanji forms that count as one when letters are searched.
#pragma once

namespace tolvek {

// Pairs: an old or variant form, then the form of today. Ends with 0.
extern const char16_t* const kOldKanji;

}
