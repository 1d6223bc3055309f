// Text-to-number rules and Format, as the Basic platform under the Japanese locale.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

// Blanks and TABs around, a sign in front or behind, "(5)", currency signs,
// thousands commas, a fraction, an exponent, &H and &O, full-width digits.
// An empty or blank text and any other rest: error 13. Out of range: 6.
// Halves round to the even neighbour.
double toDouble(TextView text);
Int16 toInt16(TextView text);
std::int32_t toInt32(TextView text);

Int16 roundToInt16(double value);        // half to even; out of range 6

// True when the text converts by the rules above.
bool isNumeric(TextView text);

// Patterns: "0...": at least as many digits; "##0.00": half away from zero.
Text format(double value, TextView pattern);
// A text that is a number is converted first, any other comes back as it is.
Text format(TextView value, TextView pattern);

}
