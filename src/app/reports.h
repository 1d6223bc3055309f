// The common error report in its two forms, and the question whether a routine
// that reports for itself has reported.
#pragma once
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text.h"

namespace tolvek {

// Box "エラーメッセージ (routine)" with number and description.
void ErrReport(TextView routine, const RuntimeError& error);
// The same; on 429 and 3356 the program ends, otherwise gDb is closed.
void ErrReportDb(TextView routine, const RuntimeError& error);

// What was reported since this was made, by whatever routine.
class ReportWatch {
public:
    ReportWatch();
    bool any() const;
    // A failure that will hold for every mail to come: the device (57), a full disk
    // (61), no access (75), no database (3024), a read-only one (3027), a damaged
    // one (3343). Going on would bring one box a mail, and store none.
    bool lasting() const;

private:
    int any_, lasting_; // counts, as they were then
};

}
