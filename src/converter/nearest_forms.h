// Replacements for characters that code page 932 lacks: the letter without its marks,
// or the letters that are usually written instead.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Private characters of one make of phone or machine become 〓. Characters without a
// near form stay, and so do those of the code page.
Text nearestForms(Text text);

}
