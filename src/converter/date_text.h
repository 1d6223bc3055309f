// The text of a Date field, brought into plain ASCII as far as a date needs it.
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

// What joins year, month and day of a date that was written with 年, 月 and 日:
// the year comes first.
inline constexpr char kYearFirst = '\x01';

// Comments and quotes out; encoded words, Japanese writing out, full-width
// digits and eras (平成10年 becomes H10) undone; other letters in lower case and
// without marks, as UTF-8.
std::string dateText(std::string_view field);

}
