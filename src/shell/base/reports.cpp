// The two forms of the common error report, and the count that ends in one.
#include "platform/forms/do_events.h"
#include "platform/forms/msg_box.h"
#include "platform/system/process.h"
#include "shell/base/general.h"
#include "shell/base/guard.h"
#include "shell/base/report_watch.h"

#include <algorithm>
#include <iterator>

namespace tolvek {

Database gDb;
Workspace gWs;
Recordset gRs;
Text gDbPath;
Text gHelpPath;

namespace {

int reportsShown = 0;
int lastingReportsShown = 0;

bool isLasting(int number)
{
    constexpr int kLasting[] = {57, 61, 75, 3024, 3027, 3343};
    return std::ranges::find(kLasting, number) != std::end(kLasting);
}

void showReport(TextView routine, const RuntimeError& error, const Text& text)
{
    ++reportsShown;
    if (isLasting(error.number())) ++lastingReportsShown;
    MsgBox(text, MsgButtons::Ok, u"エラーメッセージ (" + Text(routine) + u")", MsgIcon::Critical);
}

Text numberAndDescription(const RuntimeError& error, TextView lineEnd)
{
    return u"エラー番号： " + decimal(error.number()) + Text(lineEnd) + u"（" +
           error.description() + u"）";
}

// Nothing can be done about these two: what the box adds, and then the end.
Text endingExplanation(int number)
{
    if (number == 429)
        return u"\r\n\r\nDLL の バージョンが違うか，インストールされていません。\r\n"
               u"フルインストールを実行して下さい。";
    if (number == 3356) return u"\r\n\r\nMail File がロックされています。";
    return {};
}

}

// The line end here is a carriage return alone, unlike in ErrReportDb.
void ErrReport(TextView routine, const RuntimeError& error)
{
    showReport(routine, error, numberAndDescription(error, u"\r"));
}

void ErrReportDb(TextView routine, const RuntimeError& error)
{
    const Text explanation = endingExplanation(error.number());
    showReport(routine, error, numberAndDescription(error, kCrLf) + explanation);
    if (!explanation.empty()) endProgram();
    gDb.Close();
}

ReportWatch::ReportWatch() : any_(reportsShown), lasting_(lastingReportsShown) {}

bool ReportWatch::any() const
{
    return reportsShown != any_;
}

bool ReportWatch::lasting() const
{
    return lastingReportsShown != lasting_;
}

void GET_RECCNT(Recordset& recordset, Int16& count)
{
    leaveOnError(u"GET_RECCNT", [&] {
        count = 0;
        if (recordset.NoMatch() || recordset.RecordCount() == 0) return;
        while (!recordset.Eof()) {
            ++count; // a Basic integer: beyond 32767 this is the routine's own failure
            recordset.MoveNext();
            DoEvents();
        }
        if (count != 0) recordset.MoveFirst();
    });
}

// Reports as a database routine does and still goes on with the next statement.
void SleepEX_Rtn(Int16 count)
{
    for (int i = 0; i < count; ++i) {
        leaveOnError(u"SleepEX_Rtn", [] { sleepMilliseconds(1); });
        leaveOnError(u"SleepEX_Rtn", [] { DoEvents(); });
    }
}

}
