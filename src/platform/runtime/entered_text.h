// Restricts text that a user types, pastes or drops to what code page 932 holds,
// since nothing else can be stored or passed to the outside program. Characters
// take the forms described in ansi_forms.h. Control characters and characters
// without a form are removed.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// The text up to its first line end: CR, LF, NEL, U+2028 or U+2029.
Text enteredLine(TextView text);

// Keeps CR, LF and TAB; the other line ends become LF.
Text enteredLines(TextView text);

}
