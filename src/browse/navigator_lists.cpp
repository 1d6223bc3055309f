// Fills the navigator's list box from the store.
#include "app/database.h"
#include "app/guard.h"
#include "browse/navigator.h"
#include "filter/filter_rules.h"
#include "platform/runtime/do_events.h"
#include "store/open_or_create.h"
#include "window/frm_tolvek.h"

namespace tolvek {

namespace {

// The loop common to the four lists. `prepare` is called with the number of rows,
// `addRow` for each row with the number of the next entry.
template <class Prepare, class AddRow>
void listRows(frmTolvek& form, const Statement& sql, Prepare prepare, AddRow addRow)
{
    gRs = gDb.OpenRecordset(sql, dbOpenDynaset);
    Int16 count = 0;
    GET_RECCNT(gRs, count);
    // Cleared only now: a query that fails leaves the lists unchanged.
    form.lstNameOrAddr->Clear();
    form.lstSubject->Clear();
    prepare(count);
    Int16 entry = 0;
    if (count != 0) {
        for (; !gRs.Eof(); gRs.MoveNext())
            addRow(entry);
        // Kept: one yield for all rows, and none for an empty list.
        DoEvents();
    }
    gDb.Close();
}

void noPreparation(Int16) {}

// Each row becomes an entry: its one column.
auto entryFrom(frmTolvek& form, TextView column)
{
    return [&form, column](Int16& entry) {
        form.lstNameOrAddr->setList(entry, gRs.field(column).text());
        ++entry;
    };
}

}

void dspSearch_Addr(frmTolvek& form)
{
    leaveOnError(u"dspSearch_Addr", [&] {
        openOrCreate();
        Statement sql{u"SELECT * FROM tblSearch_Addresses"};
        sql << u" ORDER By " << u" tblSearch_Addr_Data ASC ";
        listRows(form, sql, noPreparation, entryFrom(form, u"tblSearch_Addr_Data"));
    });
}

void dspSearch_Name(frmTolvek& form)
{
    leaveOnError(u"dspSearch_Name", [&] {
        openOrAskToCreate(u"dspSearch Name");
        Statement sql{u"SELECT * FROM tblSearch_Name"};
        sql << u" ORDER By " << u" tblSearch_Name_Data ASC ";
        listRows(form, sql, noPreparation, entryFrom(form, u"tblSearch_Name_Data"));
    });
}

// There is no table of dates: the whole mail table is walked, newest date first. Rows
// are sorted by date, so comparing with the previous row's date finds each date once.
void dspSearch_Date(frmTolvek& form)
{
    leaveOnError(u"dspSearch_Date", [&] {
        openOrAskToCreate(u"dspSearch Date");
        Statement sql{u"SELECT * FROM tblTolvek"};
        sql << u" ORDER By" << u" tblTolvek_YMD DESC," << u" tblTolvek_HMS ASC,"
            << u" tblTolvek_SubKey ASC," << u" tblTolvek_SndAdd ASC," << u" tblTolvek_RcvAdd ASC ";
        const auto clearPanes = [&](Int16) {
            form.txtMail->setText(u"");
            form.lblHead->setCaption(u"");
        };
        Text lastDate;
        listRows(form, sql, clearPanes, [&](Int16& entry) {
            const Text date = gRs.field(u"tblTolvek_YMD").text();
            if (date == lastDate) return;
            lastDate = date;
            form.lstNameOrAddr->setList(entry, date);
            ++entry;
        });
    });
}

void dspSearch_Filter(frmTolvek& form)
{
    leaveOnError(u"dspSearch_Filter", [&] {
        openOrCreate();
        Statement sql{u"SELECT * FROM tblFilter"};
        sql << u" ORDER By " << u" tblFilter_No ASC ";
        const auto forget = [](Int16 count) {
            if (count != 0) emptyFilterRules();
        };
        listRows(form, sql, forget, [&](Int16& entry) {
            // Do-not-read rules have no view.
            if (gRs.field(u"tblFilter_ActionCode").int16() != 0) return;
            form.lstNameOrAddr->setList(entry, gRs.field(u"tblFilter_Header").text());
            gFilterRule[entry] = currentFilterRule();
            ++entry;
        });
    });
}

}
