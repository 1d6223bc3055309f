// Text-to-number rules and Format, as the Basic platform under the Japanese locale.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

// Blanks around, a sign in front, thousands commas, a fraction, an exponent,
// &H and &O, all of it in full width too. An empty or blank text and any other
// rest (TABs, "5-", "(5)", currency signs): error 13. Out of range: 6. Halves
// round to the even neighbour. &H and &O tell the bits of the result, so that
// "&HFFFF" is -1 in 16 bits and 65535 elsewhere.
double toDouble(TextView text);
Int16 toInt16(TextView text);
std::int32_t toInt32(TextView text);

Int16 roundToInt16(double value);        // half to even; out of range 6

// True when the text converts by the rules above.
bool isNumeric(TextView text);

// Patterns of 0 and # with at most one point: a 0 is a digit in any case, a #
// only where there is one; half away from zero ("##0.00": 0.125 gives 0.13).
// A negative number keeps its minus. Any other pattern: error 5.
Text format(double value, TextView pattern);
// A text that is a number is converted first, any other comes back as it is.
Text format(TextView value, TextView pattern);

}
