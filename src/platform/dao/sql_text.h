// A statement in the form for the engine: values and quoted literals are replaced by
// parameters.
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
    std::vector<SqlWord> words; // names and keywords, in order
    Text shown;                 // as the classic platform would see it, for messages

    bool startsWith(TextView keyword) const { return !words.empty() && words[0].upper == keyword; }
    Text word(const SqlWord& at) const { return sql.substr(at.begin, at.end - at.begin); }
};

// A literal becomes one ?, however many pieces and values it consists of, and so does a
// number value. The words True and False become -1 and 0. Error 3075 for a text value
// with a single quote or outside quotes, an unclosed literal, or a number joined to
// anything except a name. Error 3142 for text after a semicolon.
SqlText sqlText(const Statement& statement);

// The text that a syntax error shows: the condition, or the whole statement without one.
Text shownExpression(TextView statement);

Text upperAscii(TextView text);
bool sameName(TextView a, TextView b); // ignores the case of ASCII letters

}
