// Text with format=flowed: a line that ends in a blank continues in the next.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Joins each paragraph to one line, removes the blank that was put before a line, and
// keeps the quote marks. deleteBlank: the blank at the end of a broken line isn't part
// of the text.
Text unflowed(TextView text, bool deleteBlank);

}
