#include "store/mail_set.h"

#include "platform/dao/dao.h"
#include "platform/runtime/runtime_error.h"
#include "store/schema.h"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <utility>
#include <vector>

namespace tolvek {

namespace {

// Two rows are the same when these fields agree.
struct ComparedTable {
    Statement rows;
    std::vector<int> fields;
};

ComparedTable withAllFields(const Statement& rows, const TableSpec& table)
{
    std::vector<int> fields(table.fields.size());
    std::iota(fields.begin(), fields.end(), 0);
    return {rows, fields};
}

// Without the columns SndName and RcvName, and Include, which is always empty.
ComparedTable mails()
{
    ComparedTable table = withAllFields(Statement{u"SELECT * FROM tblTolvek"}, tblTolvekSpec());
    std::erase_if(table.fields, [](int field) { return field == 4 || field == 6 || field > 24; });
    return table;
}

ComparedTable friends()
{
    return withAllFields(Statement{u"SELECT * FROM tblFriend"}, tblFriendSpec());
}

ComparedTable rules()
{
    return withAllFields(Statement{u"SELECT * FROM tblFilter"}, tblFilterSpec());
}

// Archives of earlier versions hold Null where this one stores an empty text.
Text textOf(const Value& value)
{
    return value.isNull() ? Text() : value.text();
}

// The separator keeps the same characters in other fields apart.
std::size_t identityOf(const Recordset& row, const std::vector<int>& fields)
{
    Text all;
    for (const int field : fields)
        all += textOf(row.field(field)) + u'\0';
    return std::hash<Text>()(all);
}

// 3343: not a database; 3078: no such table; 3265: a table with fewer columns.
bool isUnreadable(const RuntimeError& error)
{
    return error.number() == 3343 || error.number() == 3078 || error.number() == 3265;
}

// Stops when `take` returns false. Returns whether the file could be read.
template <class Take> bool eachRow(const Text& database, const ComparedTable& table, Take take)
{
    try {
        Database opened = DBEngine::OpenDatabase(database);
        Recordset row = opened.OpenRecordset(table.rows);
        for (bool more = true; more && !row.Eof(); row.MoveNext())
            more = take(identityOf(row, table.fields));
        opened.Close();
        return true;
    } catch (const RuntimeError& error) {
        if (!isUnreadable(error)) throw;
        return false;
    }
}

using Identities = std::optional<std::unordered_set<std::size_t>>;

Identities identitiesIn(const Text& database, const ComparedTable& table)
{
    std::unordered_set<std::size_t> found;
    const bool read = eachRow(database, table, [&](std::size_t row) {
        found.insert(row);
        return true;
    });
    return read ? Identities(std::move(found)) : std::nullopt;
}

bool holdAllOf(const Identities& rows, const Text& database, const ComparedTable& table)
{
    if (!rows) return false;
    bool all = true;
    const bool read =
        eachRow(database, table, [&](std::size_t row) { return all = rows->contains(row); });
    return read && all;
}

}

MailSet::MailSet(const Text& database) : mails_(identitiesIn(database, mails())) {}

bool MailSet::holdsAllOf(const Text& database) const
{
    return holdAllOf(mails_, database, mails());
}

bool holdsMailsFriendsAndRulesOf(const Text& copy, const Text& database)
{
    return std::ranges::all_of(std::array{mails(), friends(), rules()}, [&](const auto& table) {
        return holdAllOf(identitiesIn(copy, table), database, table);
    });
}

}
