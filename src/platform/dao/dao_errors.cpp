#include "platform/dao/dao_errors.h"

#include "platform/dao/column_rules.h"
#include "platform/dao/connection.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <set>

namespace tolvek {

namespace {

constexpr TextView kCheckFailed = u"CHECK constraint failed: ";

RuntimeError constraintError(int code, TextView message)
{
    if (code == SQLITE_CONSTRAINT_CHECK && message.starts_with(kCheckFailed))
        return brokenRule(message.substr(kCheckFailed.size()));
    if (code == SQLITE_CONSTRAINT_NOTNULL)
        return RuntimeError(3058, u"インデックスまたは主キーには、Null 値を使用できません。",
                            nullptr);
    return RuntimeError(3022); // the others are keys and unique indexes
}

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

RuntimeError lockedError(TextView path)
{
    return RuntimeError(3356,
                        u"データベース '" + Text(path) +
                            u"' は、ほかのプログラムが使用中のため、使用できません。",
                        nullptr);
}

RuntimeError readOnlyError()
{
    return RuntimeError(3027);
}

RuntimeError sqliteError(int code, TextView message, TextView path)
{
    switch (code & 0xFF) {
    case SQLITE_CONSTRAINT:
        return constraintError(code, message);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return lockedError(path);
    case SQLITE_READONLY: // or another program has put another file in its place
        return code == SQLITE_READONLY_DBMOVED ? lockedError(path) : readOnlyError();
    case SQLITE_FULL:
        return RuntimeError(61);
    case SQLITE_IOERR:
        return RuntimeError(57);
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return RuntimeError(75);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return RuntimeError(3343, path);
    case SQLITE_TOOBIG:
        return RuntimeError(3163);
    case SQLITE_NOMEM:
        return RuntimeError(7, u"メモリが不足しています。", nullptr);
    default:
        return RuntimeError(51, u"内部エラーです。 " + Text(message), nullptr);
    }
}

// The connection's extended code is more precise. It is 0 if the connection hasn't recorded
// the failure.
RuntimeError sqliteError(int code, sqlite3* connection, TextView path)
{
    return sqliteError(
        sqlite3_extended_errcode(connection) & 0xFF ? sqlite3_extended_errcode(connection) : code,
        fromUtf8(sqlite3_errmsg(connection)), path);
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

RuntimeError noSuchItem()
{
    return RuntimeError(3265, u"このコレクションには項目がありません。", nullptr);
}

}
