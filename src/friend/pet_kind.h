// The kinds of pets: the outside mail program's codes and their names in words.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// toCode: from a kind to its code, "0" for any other text. Otherwise from a
// code to its kind, "" for any other text. There is no code "5".
void edPetKind(Int16 toCode, const Text& source, Text& result);

}
