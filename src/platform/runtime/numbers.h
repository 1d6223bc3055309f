// Text-to-number conversion and Format, as on the classic platform under the
// Japanese locale.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

// Accepts surrounding blanks, a leading sign, thousands commas, a fraction, an
// exponent, &H and &O, all of it in full width too. Error 13 for an empty or blank
// text and for anything else (TABs, "5-", "(5)", currency signs). Error 6 if out of
// range. Halves are rounded to the even neighbour. &H and &O give the bits of the
// result: "&HFFFF" is -1 as a 16-bit integer and 65535 otherwise.
double toDouble(TextView text);
Int16 toInt16(TextView text);
std::int32_t toInt32(TextView text);

// True if the text converts by these rules.
bool isNumeric(TextView text);

// Patterns consist of 0 and # with at most one point: 0 always shows a digit, #
// only if there is one. Rounds half away from zero ("##0.00": 0.125 gives 0.13). A
// negative number keeps its minus. Any other pattern is error 5.
Text format(double value, TextView pattern);
// Converts a numeric text first; returns any other text unchanged.
Text format(TextView value, TextView pattern);

}
