#include "store/mail_set.h"

#include "platform/dao/dao.h"
#include "platform/runtime/runtime_error.h"

#include <functional>
#include <utility>

namespace tolvek {

namespace {

constexpr int kLastField = 24; // the last block of the text; "Include" follows

// The columns SndName and RcvName.
bool isName(int field)
{
    return field == 4 || field == 6;
}

// The separator keeps the same characters in other fields apart.
std::size_t identityOf(const Recordset& row)
{
    Text all;
    for (int field = 0; field <= kLastField; ++field)
        if (!isName(field)) all += row.field(field).text() + u'\0';
    return std::hash<Text>()(all);
}

// 3343: not a database; 3078: no such table; 3265: a table with fewer columns.
bool isUnreadable(const RuntimeError& error)
{
    return error.number() == 3343 || error.number() == 3078 || error.number() == 3265;
}

// Stops when `take` returns false. Returns whether the file could be read.
template <class Take> bool eachMail(const Text& database, Take take)
{
    try {
        Database opened = DBEngine::OpenDatabase(database);
        Recordset row = opened.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
        for (bool more = true; more && !row.Eof(); row.MoveNext())
            more = take(identityOf(row));
        opened.Close();
        return true;
    } catch (const RuntimeError& error) {
        if (!isUnreadable(error)) throw;
        return false;
    }
}

}

MailSet::MailSet(const Text& database)
{
    std::unordered_set<std::size_t> mails;
    const bool read = eachMail(database, [&](std::size_t mail) {
        mails.insert(mail);
        return true;
    });
    if (read) mails_ = std::move(mails);
}

bool MailSet::holdsAllOf(const Text& database) const
{
    if (!mails_) return false;
    bool all = true;
    const bool read =
        eachMail(database, [&](std::size_t mail) { return all = mails_->contains(mail); });
    return read && all;
}

}
