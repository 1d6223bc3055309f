#include "platform/dao/statement_error.h"

#include <algorithm>
#include <array>
#include <set>

namespace tolvek {

namespace {

constexpr std::array<TextView, 24> kKeywords = {
    u"SELECT", u"FROM",   u"WHERE",  u"ORDER", u"BY",      u"ASC",      u"DESC",  u"INSERT",
    u"INTO",   u"VALUES", u"UPDATE", u"SET",   u"DELETE",  u"AND",      u"OR",    u"NOT",
    u"NULL",   u"IS",     u"LIKE",   u"IN",    u"BETWEEN", u"DISTINCT", u"ROWID", u"AS"};

constexpr TextView kNoTable = u"no such table: ";

bool isKeyword(const Text& word)
{
    return std::find(kKeywords.begin(), kKeywords.end(), word) != kKeywords.end();
}

// The classic platform treats an unknown name as a parameter without a value, and its
// message gives the number of these.
int unknownNames(Connection& connection, const SqlText& statement)
{
    std::set<Text> unknown, tables;
    for (const SqlWord& word : statement.words)
        if (!isKeyword(word.upper) && tableExists(connection, word.upper))
            tables.insert(word.upper);
    // A name may be that of a column in any of the tables, which may come after it.
    for (const SqlWord& word : statement.words) {
        const bool column = std::any_of(tables.begin(), tables.end(), [&](const Text& table) {
            return connection.table(table).position(word.upper) >= 0;
        });
        if (!column && !isKeyword(word.upper) && !tables.contains(word.upper))
            unknown.insert(word.upper);
    }
    return std::max(1, static_cast<int>(unknown.size()));
}

}

RuntimeError statementError(Connection& connection, const SqlText& statement, TextView message)
{
    if (message.starts_with(kNoTable)) return RuntimeError(3078, message.substr(kNoTable.size()));
    if (message.starts_with(u"no such column") ||
        message.find(u"has no column named") != TextView::npos)
        return RuntimeError(3061, decimal(unknownNames(connection, statement)));
    if (statement.startsWith(u"INSERT")) return RuntimeError(3134);
    return RuntimeError(3075, shownExpression(statement.shown));
}

}
