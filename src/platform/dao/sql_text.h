// A statement as the engine gets it: values and quoted literals taken out.
#pragma once
#include "platform/dao/statement.h"

#include <cstdint>
#include <variant>
#include <vector>

namespace tolvek {

using Bound = std::variant<Text, std::int64_t>;

struct SqlWord {
    Text upper;             // for comparison with keywords
    std::size_t begin, end; // in SqlText::sql
};

struct SqlText {
    Text sql; // with ? for each value
    std::vector<Bound> values;
    std::vector<SqlWord> words; // names and keywords, in their order
    Text shown;                 // as the home platform would see it, for messages

    bool startsWith(TextView keyword) const { return !words.empty() && words[0].upper == keyword; }
    Text word(const SqlWord& at) const { return sql.substr(at.begin, at.end - at.begin); }
};

// Literals become ? as a whole, however many values they are put together
// from, and so do numbers; the words True and False become -1 and 0. A text
// value with a single quote or outside quotes, an unclosed literal or a number
// glued to anything but a name: 3075. Text behind a semicolon: 3142.
SqlText sqlText(const Statement& statement);

// What a syntax error shows: the condition, or the whole where there is none.
Text shownExpression(TextView statement);

Text upperAscii(TextView text);
bool sameName(TextView a, TextView b); // case doesn't count

}
