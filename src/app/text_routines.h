// Text conversions: by the converter library, by position, and for the key sender.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Decodes a text by the converter library's export Mail_StrChange. Reports its own
// failures.
void Mail_StrChange_Sub(const Text& source, Text& result);

// Replaces every occurrence of `search` by `replacement`, in place. `length` is the
// length of both in characters. Lengths that don't fit together are reported in a box.
void StrChange(const Text& source, const Text& search, const Text& replacement, Int16 length,
               Text& result);

// Escapes `source` so that the key sender types it literally. "]" isn't escaped.
void SendKeyEscape(const Text& source, Text& result);

}
