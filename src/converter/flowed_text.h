// Text of the form "flowed": lines that end in a blank go on in the next.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Paragraphs as one line each, a blank that was put in front of a line taken
// away, quotes marked as they were. deleteBlank: the blank at a broken line's
// end isn't part of the text.
Text unflowed(TextView text, bool deleteBlank);

}
