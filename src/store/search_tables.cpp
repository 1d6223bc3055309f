#include "store/search_tables.h"

#include "app/database.h"
#include "app/guard.h"
#include "platform/runtime/do_events.h"

namespace tolvek {
namespace {

// The parts in which the two tables differ; the algorithm is the same.
struct SearchTable {
    TextView routine;
    Statement clear;
    Statement senders;
    Statement receivers;
    Statement insert; // the value and "' )" follow
    Statement lookUp; // the value and "'" follow
};

template <class... Pieces> Statement join(Statement sql, const Pieces&... pieces)
{
    (sql << ... << pieces);
    return sql;
}

const SearchTable& nameTable()
{
    static const SearchTable table{
        u"edSearch_Name",
        Statement{u"DELETE FROM tblSearch_Name "},
        join(Statement{u"SELECT tblTolvek_SndName FROM tblTolvek"},
             u" ORDER By tblTolvek_SndName ASC "),
        join(Statement{u"SELECT tblTolvek_RcvName FROM tblTolvek"},
             u" ORDER By tblTolvek_RcvName ASC "),
        join(Statement{u"INSERT INTO tblSearch_Name "}, u"( tblSearch_Name_Data ) ", u"VALUES( '"),
        join(Statement{u"SELECT tblSearch_Name_Data FROM tblSearch_Name"},
             u" WHERE tblSearch_Name_Data = '"),
    };
    return table;
}

const SearchTable& addressTable()
{
    static const SearchTable table{
        u"edSearch_Addr",
        Statement{u"DELETE FROM tblSearch_Addresses "},
        join(Statement{u"SELECT tblTolvek_SndAdd FROM tblTolvek"},
             u" ORDER By tblTolvek_SndAdd ASC "),
        join(Statement{u"SELECT tblTolvek_RcvAdd FROM tblTolvek"},
             u" ORDER By tblTolvek_RcvAdd ASC "),
        join(Statement{u"INSERT INTO tblSearch_Addresses "}, u"( tblSearch_Addr_Data ) ",
             u"VALUES( '"),
        join(Statement{u"SELECT tblSearch_Addr_Data FROM tblSearch_Addresses"},
             u" WHERE tblSearch_Addr_Data = '"),
    };
    return table;
}

// The engine's comparison ignores case, so a sender in another spelling is found.
bool isListed(const SearchTable& table, const Text& value)
{
    Int16 count;
    Recordset found = gDb.OpenRecordset(join(table.lookUp, value, u"'"), dbOpenDynaset);
    GET_RECCNT(found, count);
    return count != 0;
}

void insertValue(const SearchTable& table, const Text& value)
{
    executeInTransaction(join(table.insert, value, u"' )"));
}

// The rows are sorted, so equal values are adjacent and each is compared only with the
// previous one. Of values that differ only in case, the first spelling is listed.
void listValues(const SearchTable& table, const Statement& source, bool lookUpFirst)
{
    Int16 count;
    gRs = gDb.OpenRecordset(source, dbOpenDynaset);
    GET_RECCNT(gRs, count);
    if (count == 0) return;
    Text remembered;
    while (!gRs.Eof()) {
        const Text stored = gRs.field(0).text();
        Text folded = trim(lowerCase(stored));
        if (folded != remembered) {
            remembered = std::move(folded);
            const Text value = trim(stored);
            if (!lookUpFirst || !isListed(table, value)) insertValue(table, value);
        }
        gRs.MoveNext();
        DoEvents();
    }
}

void rebuild(const SearchTable& table)
{
    leaveOnError(table.routine, [&] {
        openArchive();
        executeInTransaction(table.clear);
        // The table is empty now, so the senders need no look-up.
        listValues(table, table.senders, false);
        DoEvents();
        listValues(table, table.receivers, true);
        gDb.Close();
    });
}

}

void edSearch_Name()
{
    rebuild(nameTable());
}

void edSearch_Addr()
{
    rebuild(addressTable());
}

}
