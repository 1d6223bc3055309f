// The kinds of pets: PostPet's codes and their names.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// With toCode, converts a kind to its code, "0" for any other text. Otherwise converts
// a code to its kind, "" for any other text. There is no code "5".
void edPetKind(Int16 toCode, const Text& source, Text& result);

}
