// What becomes of a text that a user types, pastes or drops: the characters that
// code page 932 holds, since nothing else can be stored or handed to the outside
// program, in its forms (ansi_forms.h), and none that can't be seen. Control
// characters and what has no form are dropped.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Up to the first line end: CR, LF, NEL, U+2028 or U+2029.
Text enteredLine(TextView text);

// CR, LF and TAB stay; the other line ends become LF.
Text enteredLines(TextView text);

}
