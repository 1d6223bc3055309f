#include "store/ver_up300_copy.h"

#include "app/database.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "store/schema.h"

namespace tolvek {

namespace {

// Access to the fields of the current row.
class OldRow {
public:
    explicit OldRow(const Recordset& row) : row_(row) {}

    // Null becomes an empty text in the statement.
    Text text(TextView name) const
    {
        const Value value = row_.field(name);
        return value.isNull() ? Text() : value.text();
    }
    int number(TextView name) const { return row_.field(name).int32(); }
    bool flag(TextView name) const { return row_.field(name).boolean(); }

private:
    const Recordset& row_;
};

struct OldTable {
    Statement select;
    TextView progress;
    Statement (*insert)(const OldRow&);
};

Statement filterInsert(const OldRow& row)
{
    Statement sql{u"INSERT INTO tblFilter "};
    sql << u"( tblFilter_No," << u"tblFilter_TermsCode," << u"tblFilter_ActionCode,"
        << u"tblFilter_Header," << u"tblFilter_Data ) " << u"VALUES( "
        << row.number(u"tblFilter_No") << u", " << row.number(u"tblFilter_TermsCode") << u", "
        << row.number(u"tblFilter_ActionCode") << u", '" << row.text(u"tblFilter_Header") << u"', '"
        << row.text(u"tblFilter_Data") << u"' )";
    return sql;
}

Statement filterDataInsert(const OldRow& row)
{
    Statement sql{u"INSERT INTO tblFilterData "};
    sql << u"( tblFilterDt_Id, " << u"tblFilterDt_No, " << u"tblFilterDt_Date, "
        << u"tblFilterDt_Time, " << u"tblFilterDt_SubKey, " << u"tblFilterDt_SendName, "
        << u"tblFilterDt_SendAddr, " << u"tblFilterDt_RecvName, " << u"tblFilterDt_RecvAddr, "
        << u"tblFilterDt_SndRcvFlag, " << u"tblFilterDt_Subject ) " << u"VALUES( "
        << row.number(u"tblFilterDt_Id") << u", " << row.number(u"tblFilterDt_No") << u", '"
        << row.text(u"tblFilterDt_Date") << u"', '" << row.text(u"tblFilterDt_Time") << u"', 00"
        << u", '" << row.text(u"tblFilterDt_SendName") << u"', '"
        << row.text(u"tblFilterDt_SendAddr") << u"', '" << row.text(u"tblFilterDt_RecvName")
        << u"', '" << row.text(u"tblFilterDt_RecvAddr") << u"', "
        << row.flag(u"tblFilterDt_SndRcvFlag") << u", '" << row.text(u"tblFilterDt_Subject")
        << u"' )";
    return sql;
}

Statement friendInsert(const OldRow& row)
{
    Statement sql{u"INSERT INTO tblFriend "};
    sql << u"( tblFriend_PetKind, " << u"tblFriend_Pet, " << u"tblFriend_Name, "
        << u"tblFriend_Address, " << u"tblFriend_RecvMailCnt ) " << u"VALUES( '"
        << row.text(u"tblFriend_PetKind") << u"', '" << row.text(u"tblFriend_Pet") << u"', '"
        << row.text(u"tblFriend_Name") << u"', '" << row.text(u"tblFriend_Address") << u"', "
        << row.number(u"tblFriend_RecvMailCnt") << u" )";
    return sql;
}

Statement searchAddressInsert(const OldRow& row)
{
    Statement sql{u"INSERT INTO tblSearch_Addresses "};
    sql << u"( tblSearch_Addr_Data ) " << u"VALUES( '" << row.text(u"tblSearch_Addr_Data")
        << u"' )";
    return sql;
}

Statement searchNameInsert(const OldRow& row)
{
    Statement sql{u"INSERT INTO tblSearch_Name "};
    sql << u"( tblSearch_Name_Data ) " << u"VALUES( '" << row.text(u"tblSearch_Name_Data")
        << u"' )";
    return sql;
}

// The two fields that the old table lacks are among them: the sub key becomes 00, and the
// include field, a text that the program doesn't use, 0.
void appendMailColumns(Statement& sql)
{
    sql << u"(tblTolvek_YMD, tblTolvek_HMS, " << u"tblTolvek_SubKey, tblTolvek_SndRcvFlag, "
        << u"tblTolvek_SndName, tblTolvek_SndAdd, " << u"tblTolvek_RcvName, tblTolvek_RcvAdd, "
        << u"tblTolvek_Subject, ";
    for (int i = 1; i <= kMailBlocks; ++i)
        sql << u"tblTolvek_Mail" << i << u", ";
    sql << u"tblTolvek_Include ) ";
}

Statement mailInsert(const OldRow& row)
{
    Statement sql{u"INSERT INTO tblTolvek "};
    appendMailColumns(sql);
    sql << u"VALUES( '" << row.text(u"tblTolvek_YMD") << u"', '" << row.text(u"tblTolvek_HMS")
        << u"', 00" << u", " << row.flag(u"tblTolvek_SndRcvFlag") << u", '"
        << row.text(u"tblTolvek_SndName") << u"', '" << row.text(u"tblTolvek_SndAdd") << u"', '"
        << row.text(u"tblTolvek_RcvName") << u"', '" << row.text(u"tblTolvek_RcvAdd") << u"', '"
        << row.text(u"tblTolvek_Subject");
    for (int i = 1; i <= kMailBlocks; ++i)
        sql << u"', '" << row.text(u"tblTolvek_Mail" + decimal(i));
    sql << u"', False )";
    return sql;
}

// In the order in which they are copied.
const std::vector<OldTable>& oldTables()
{
    static const std::vector<OldTable> tables{
        {Statement{u"SELECT * FROM tblFilter ORDER By  tblFilter_ActionCode ASC, "
                   u"tblFilter_No ASC "},
         u"フィルターの整合性チェックが ", filterInsert},
        {Statement{u"SELECT * FROM tblFilterData ORDER By  tblFilterDt_No ASC, "
                   u" tblFilterDt_Date ASC,  tblFilterDt_Time ASC,  tblFilterDt_SendAddr ASC, "
                   u" tblFilterDt_RecvAddr ASC "},
         u"フィルターデータの整合性チェックが ", filterDataInsert},
        {Statement{u"SELECT * FROM tblFriend ORDER By  tblFriend_Address ASC "},
         u"お友達帳の整合性チェックが ", friendInsert},
        {Statement{u"SELECT * FROM tblSearch_Addresses ORDER By  tblSearch_Addr_Data ASC "},
         u"アドレス一覧の整合性チェックが ", searchAddressInsert},
        {Statement{u"SELECT * FROM tblSearch_Name ORDER By  tblSearch_Name_Data ASC "},
         u"送受信者名の整合性チェックが ", searchNameInsert},
        {Statement{u"SELECT * FROM tblTolvek ORDER By  tblTolvek_YMD ASC, tblTolvek_HMS ASC,"
                   u" tblTolvek_SndAdd ASC, tblTolvek_RcvAdd ASC "},
         u"メールデータの整合性チェックが ", mailInsert},
    };
    return tables;
}

// GET_RECCNT reports its own failure, closes gDb and may then return 0. The table would
// be skipped and the upgrade would seem to succeed, so a closed gDb counts as a failure.
int countOf(Recordset& rows)
{
    Int16 count;
    GET_RECCNT(rows, count);
    if (!gDb.isOpen()) throw RuntimeError(3420);
    return count;
}

Text progressLine(TextView what, std::int32_t counter, int count)
{
    return Text(what) + Text(kCrLf) + format(double(counter) / count * 100, u"##0.00") +
           u" % 終了しました。";
}

void copyTable(Database& old, const OldTable& table, const UpgradeProgress& progress)
{
    Recordset rows = old.OpenRecordset(table.select, dbOpenDynaset);
    const int count = countOf(rows);
    for (std::int32_t counter = 1; !rows.Eof(); ++counter) {
        progress(progressLine(table.progress, counter, count));
        DoEvents();
        executeInTransaction(table.insert(OldRow(rows)));
        rows.MoveNext();
        DoEvents();
    }
    rows.Close();
}

}

void copyOldTables(Database& old, const UpgradeProgress& progress)
{
    for (const OldTable& table : oldTables())
        copyTable(old, table, progress);
}

}
