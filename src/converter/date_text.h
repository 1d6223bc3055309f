// The words of a date: the text of a Date field as plain ASCII, as far as a date needs
// it, and the names of the months.
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

// Joins year, month and day of a date that was written with 年, 月 and 日: the year comes
// first.
inline constexpr char kYearFirst = '\x01';

// Removes comments and quotes, decodes encoded words, and replaces Japanese writing,
// full-width digits and eras (平成10年 becomes H10). Other letters become lower case
// without accents, as UTF-8.
std::string dateText(std::string_view field);

// The month of a name as mail programs of many countries write it: 1 to 12, else 0. By
// the English name's first three letters in any case, or by the beginning of a name of
// another language; accents don't count.
int monthNumber(std::string_view word);

}
