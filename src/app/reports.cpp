#include "app/reports.h"

#include "app/database.h"
#include "app/program_end.h"
#include "platform/runtime/msg_box.h"

#include <algorithm>
#include <iterator>

namespace tolvek {

namespace {

int reportsShown = 0;
int lastingReportsShown = 0;

// Errors that would fail every later mail in the same way; see ReportWatch::lasting.
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

// The program can't recover from these two errors. Returns the explanation added to the
// report before the program ends; empty for any other error.
Text endingExplanation(int number)
{
    if (number == 429)
        return u"\r\n\r\nDLL の バージョンが違うか，インストールされていません。\r\n"
               u"フルインストールを実行して下さい。";
    if (number == 3356) return u"\r\n\r\nMail File がロックされています。";
    return {};
}

}

// Kept quirk: the lines are separated by a carriage return alone, unlike in
// ErrReportDb.
void ErrReport(TextView routine, const RuntimeError& error)
{
    showReport(routine, error, numberAndDescription(error, u"\r"));
}

void ErrReportDb(TextView routine, const RuntimeError& error)
{
    const Text explanation = endingExplanation(error.number());
    showReport(routine, error, numberAndDescription(error, kCrLf) + explanation);
    if (!explanation.empty()) endProgram();
    // A routine that failed leaves gDb open; its caller expects it closed.
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

}
