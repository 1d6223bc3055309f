#include "platform/dao/sqlite_error.h"

#include "platform/dao/column_rules.h"

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

}
