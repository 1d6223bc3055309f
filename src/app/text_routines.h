// Texts that go through the converter library, by position, or to the key sender.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Decodes a text through the converter library (export Mail_StrChange).
void Mail_StrChange_Sub(const Text& source, Text& result);

// Replaces every occurrence of a piece by one of the same length, in place.
void StrChange(const Text& source, const Text& search, const Text& replacement, Int16 length,
               Text& result);

// What the key sender takes as literal text. "]" isn't in its list and stays bare.
void SendKeyEscape(const Text& source, Text& result);

}
