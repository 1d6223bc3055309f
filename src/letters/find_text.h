// Looks for a word in long texts.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// The position (from 0) of the first occurrence at or after `from`; npos if there is none
// or the word is empty. Several times as fast as TextView::find, since it compares the
// word's first and last unit at many places at once.
std::size_t findText(TextView text, TextView word, std::size_t from = 0);

}
