#include "import/tolvek_db.h"

#include "app/database.h"
#include "app/guard.h"
#include "platform/dao/dao.h"

#include <algorithm>

namespace tolvek {
namespace {

// Two mails may be the same one if they were sent in the same second between the same
// two addresses. The direction flag is left out on purpose: a mail that the user sent
// to himself is in boxes of both sides and is stored once. The condition is left open
// for the subject.
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

// A bar would end a value on the classic platform, so it is stored in full width. Kept
// quirk: the replacement stops at the length in bytes of the text trimmed at both ends,
// but counts from the untrimmed start, so after many leading blanks a late bar stays.
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

Storing TolvekDB_Edit(Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd,
                      const Text& RcvName, const Text& RcvAdd, const Text& Subject, const Text& YMD,
                      const Text& HMS, const MailBlocks& MailText)
{
    Storing result = Storing::Failed;
    leaveOnError(u"TolvekDB_Edit", [&] {
        Int16 subKey;
        gDb = DBEngine::OpenDatabase(gDbPath);
        Statement others = sameSecond(SndAdd, RcvAdd, YMD, HMS);
        Int16 count = rowsOf(others << u"' )");
        if (count != 0 && gDb.isOpen()) {
            // Rows come in primary key order, so the last one has the highest sub key.
            gRs.MoveLast();
            subKey = gRs.field(u"tblTolvek_SubKey").int16();
            count = rowsOf(sameMail(SndAdd, RcvAdd, YMD, HMS, Subject));
            if (count == 0) ++subKey;
        }
        // A failed count has reported its error and closed the database. Whether the
        // mail is stored is then unknown, so it isn't stored again.
        if (!gDb.isOpen()) return;
        gDb.Close();
        if (count != 0)
            result = Storing::Known;
        else if (TolvekDB_Insert(SndRcvFlag, SndName, SndAdd, RcvName, RcvAdd, Subject, YMD, HMS,
                                 subKey, MailText))
            result = Storing::Stored;
    });
    return result;
}

bool TolvekDB_Insert(Int16 SndRcvFlag, const Text& SndName, const Text& SndAdd, const Text& RcvName,
                     const Text& RcvAdd, const Text& Subject, const Text& YMD, const Text& HMS,
                     Int16 SubKey, const MailBlocks& MailText)
{
    return leaveOnError(u"TolvekDB_Insert", [&] {
        openArchive();
        Statement insert{u"INSERT INTO tblTolvek "};
        appendColumns(insert);
        insert << u"VALUES( '" << YMD << u"', '" << HMS << u"', " << SubKey << u", "
               << (SndRcvFlag != 0) << u", '" << trim(SndName) << u"', '" << trim(SndAdd) << u"', '"
               << trim(RcvName) << u"', '" << trim(RcvAdd) << u"', '" << trim(Subject);
        for (int block = 0; block <= 15; ++block)
            insert << u"', '" << storedBlock(MailText[block]);
        insert << u"', False )";
        // If it fails, the error report closes gDb and so rolls the transaction back.
        executeInTransaction(insert);
        gDb.Close();
    });
}

}
