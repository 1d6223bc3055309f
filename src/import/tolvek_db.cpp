#include "import/tolvek_db.h"

#include "app/database.h"
#include "app/guard.h"
#include "platform/dao/dao.h"

#include <algorithm>

namespace tolvek {
namespace {

// What makes two mails candidates for being one: the same second between the
// same two addresses. The direction flag is left out on purpose: a mail that
// the user sent to himself lies on both sides and is stored once.
Statement sameSecond(const Text& SndAdd, const Text& RcvAdd, const Text& YMD, const Text& HMS)
{
    Statement sql{u"SELECT * FROM tblTolvek"};
    sql << u" WHERE (" << u" tblTolvek_YMD = '" << YMD << u"' AND" << u" tblTolvek_HMS = '" << HMS
        << u"' AND" << u" tblTolvek_SndAdd = '" << SndAdd << u"' AND" << u" tblTolvek_RcvAdd = '"
        << RcvAdd;
    return sql;
}

Statement sameMail(const Text& SndAdd, const Text& RcvAdd, const Text& YMD, const Text& HMS,
                   const Text& Subject)
{
    Statement sql = sameSecond(SndAdd, RcvAdd, YMD, HMS);
    sql << u"' AND" << u" tblTolvek_Subject = '" << Subject << u"' )";
    return sql;
}

Int16 rowsOf(const Statement& sql)
{
    Int16 count;
    gRs = gDb.OpenRecordset(sql, dbOpenDynaset);
    GET_RECCNT(gRs, count);
    return count;
}

void appendColumns(Statement& sql)
{
    sql << u"(tblTolvek_YMD, tblTolvek_HMS, " << u"tblTolvek_SubKey, tblTolvek_SndRcvFlag, "
        << u"tblTolvek_SndName, tblTolvek_SndAdd, " << u"tblTolvek_RcvName, tblTolvek_RcvAdd, "
        << u"tblTolvek_Subject, ";
    for (int number = 1; number <= 16; ++number)
        sql << u"tblTolvek_Mail" << number << u", ";
    sql << u"tblTolvek_Include ) ";
}

// A bar would end a value on the home platform, so it is stored full width. The
// walk ends at the length in bytes of the text trimmed at both ends but counts
// from the untrimmed start: behind many leading blanks a late bar stays.
Text storedBlock(const Text& block)
{
    Text value = rtrim(block);
    if (value.find(u'|') == Text::npos) return value;
    const auto end = std::min(value.size(), static_cast<std::size_t>(ansiLength(trim(block))));
    std::replace(value.begin(), value.begin() + static_cast<std::ptrdiff_t>(end), u'|', u'｜');
    return value;
}

}

void duplMailCheck(const Text& /*SndName*/, const Text& SndAdd, const Text& /*RcvName*/,
                   const Text& RcvAdd, const Text& YMD, const Text& HMS, const Text& Subject,
                   Int16& found)
{
    leaveOnError(u"duplMailCheck", [&] {
        gDb = DBEngine::OpenDatabase(gDbPath);
        const Int16 count = rowsOf(sameMail(SndAdd, RcvAdd, YMD, HMS, Subject));
        gDb.Close();
        found = count != 0 ? -1 : 0;
    });
}

void TolvekDB_Edit(Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd, const Text& RcvName,
                   const Text& RcvAdd, const Text& Subject, const Text& YMD, const Text& HMS,
                   const MailBlocks& MailText)
{
    leaveOnError(u"TolvekDB_Edit", [&] {
        Int16 subKey;
        gDb = DBEngine::OpenDatabase(gDbPath);
        Statement others = sameSecond(SndAdd, RcvAdd, YMD, HMS);
        Int16 count = rowsOf(others << u"' )");
        if (count != 0 && gDb.isOpen()) {
            // Rows come along the primary key: the last one has the highest sub key.
            gRs.MoveLast();
            subKey = gRs.field(u"tblTolvek_SubKey").int16();
            count = rowsOf(sameMail(SndAdd, RcvAdd, YMD, HMS, Subject));
            if (count == 0) ++subKey;
        }
        // A count that failed has reported it and closed the database. Nobody knows
        // then whether the mail is stored: it isn't stored twice.
        if (!gDb.isOpen()) return;
        gDb.Close();
        if (count == 0)
            TolvekDB_Insert(SndRcvFlag, SndName, SndAdd, RcvName, RcvAdd, Subject, YMD, HMS, subKey,
                            MailText);
    });
}

void TolvekDB_Insert(Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd, const Text& RcvName,
                     const Text& RcvAdd, const Text& Subject, const Text& YMD, const Text& HMS,
                     Int16 SubKey, const MailBlocks& MailText)
{
    leaveOnError(u"TolvekDB_Insert", [&] {
        gWs = DBEngine::Workspaces(0);
        gDb = DBEngine::OpenDatabase(gDbPath);
        Statement insert{u"INSERT INTO tblTolvek "};
        appendColumns(insert);
        insert << u"VALUES( '" << YMD << u"', '" << HMS << u"', " << SubKey << u", "
               << (SndRcvFlag != 0) << u", '" << trim(SndName) << u"', '" << trim(SndAdd) << u"', '"
               << trim(RcvName) << u"', '" << trim(RcvAdd) << u"', '" << trim(Subject);
        for (int block = 0; block <= 15; ++block)
            insert << u"', '" << storedBlock(MailText[block]);
        insert << u"', False )";
        gWs.BeginTrans();
        gDb.Execute(insert, dbFailOnError);
        gWs.CommitTrans();
        gDb.Close();
    });
}

}
