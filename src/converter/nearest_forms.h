// What code page 932 has for a character that it hasn't: the letter without its
// marks, or the letters that are written in its place.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Private characters, of one kind of phone or machine, become 〓. What has no
// near form stays; so does what the code page has.
Text nearestForms(Text text);

}
