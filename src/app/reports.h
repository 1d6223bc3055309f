// The common error report in its two forms, and a way to find out whether a routine
// that reports for itself has done so.
#pragma once
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Shows the box "エラーメッセージ (routine)" with the error's number and description.
void ErrReport(TextView routine, const RuntimeError& error);
// The same. Errors 429 and 3356 then end the program; any other closes gDb.
void ErrReportDb(TextView routine, const RuntimeError& error);

// Watches the reports shown since its construction, by any routine.
class ReportWatch {
public:
    ReportWatch();
    bool any() const;
    // True after a failure that every later mail would meet too: device error (57),
    // disk full (61), access denied (75), no database (3024), read-only database
    // (3027), corrupt database (3343). Going on would show one box a mail and store
    // nothing.
    bool lasting() const;

private:
    int any_, lasting_; // the counts at construction
};

}
