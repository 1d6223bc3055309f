// The two ways to handle a failure, each one line where it is used.
//
//     ResumeNext on{u"comMailRead_Click"};      report and go on
//     on([&] { edFriend(); });                  one call holds one statement
//
//     leaveOnError(u"edSearch_Addr", [&] { ... });    report (database) and leave
//
// A third one serves routines in which a missing file is expected:
//
//     const PassOver53 steps{u"dbCompress"};
//     steps([&] { removeDatabase(previous); },  53: the next statement
//           [&] { rename(); });                 any other: report (database) and leave
//
// Every event procedure runs under ResumeNext or PassOver53. The outermost one also
// marks the duration of one command for the database engine, which keeps its connection
// open until the command ends.
//
// Exceptions of the standard library and of the system layer are converted and reported
// like RuntimeErrors. An exception that isn't a std::exception passes through: tests
// use one to leave a program's end.
#pragma once
#include "platform/dao/dao.h"
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text.h"

#include <exception>
#include <functional>

namespace tolvek {

// Reports a failure by ErrReport under `routine` and goes on with the next statement.
class ResumeNext {
public:
    explicit ResumeNext(TextView routine) : routine_(routine) {}
    // True when the statement succeeded.
    bool operator()(const std::function<void()>& statement) const;

private:
    Text routine_;
    DBEngine::Session session_;
};

// Runs the statements in order. Error 53 skips to the next one. Any other error is
// reported by ErrReportDb under `routine`, and the statements after it don't run.
class PassOver53 {
public:
    explicit PassOver53(TextView routine) : routine_(routine) {}
    // False when the routine has to end here.
    template <class... Statements> bool operator()(const Statements&... statements) const
    {
        return (passed(statements) && ...);
    }

private:
    bool passed(const std::function<void()>& statement) const;

    Text routine_;
    DBEngine::Session session_;
};

// Runs the routine's body. A failure ends the body and is reported under `routine`, by
// ErrReportDb or ErrReport. True when the body ran to its end.
bool leaveOnError(TextView routine, const std::function<void()>& body);      // ErrReportDb
bool leavePlainOnError(TextView routine, const std::function<void()>& body); // ErrReport

// Converts any failure to its error number: out of memory is 7, a failed file operation
// gets the number fileError gives it, anything else is the internal error 51.
RuntimeError asRuntimeError(const std::exception& failure);

}
