// The two answers to a failure, each one line at the place where it is used.
//
//     ResumeNext on{u"comMailRead_Click"};      report and go on
//     on([&] { edFriend(); });                  one call holds one statement
//
//     leaveOnError(u"edSearch_Addr", [&] { ... });    report (database) and leave
//
// and one between them, for routines among whose statements a missing file is
// the normal case:
//
//     const PassOver53 steps{u"dbCompress"};
//     steps([&] { removeDatabase(previous); },  53: the next statement
//           [&] { rename(); });                 any other: report (database) and leave
//
// Every event procedure runs under ResumeNext or PassOver53; as the outermost
// one it also is the length of one command for the database engine.
//
// What the standard library and the system layer throw is reported like the
// platform's own errors. An exception that isn't a std::exception passes
// through: tests leave a program's end by one.
#pragma once
#include "platform/dao/dao.h"
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text.h"

#include <exception>
#include <functional>

namespace tolvek {

// Reports by ErrReport under `routine` and goes on with the next statement.
class ResumeNext {
public:
    explicit ResumeNext(TextView routine) : routine_(routine) {}
    // True when the statement went through.
    bool operator()(const std::function<void()>& statement) const;

private:
    Text routine_;
    DBEngine::Session session_;
};

// Goes through the statements one by one. Error 53 passes to the next one; any
// other is reported by ErrReportDb under `routine` and ends them.
class PassOver53 {
public:
    explicit PassOver53(TextView routine) : routine_(routine) {}
    // False when the routine ends here.
    template <class... Statements> bool operator()(const Statements&... statements) const
    {
        return (passed(statements) && ...);
    }

private:
    bool passed(const std::function<void()>& statement) const;

    Text routine_;
    DBEngine::Session session_;
};

// Runs the routine's body; a failure is reported by ErrReport / ErrReportDb
// under `routine` and ends the body. True when it went through to its end.
bool leaveOnError(TextView routine, const std::function<void()>& body);      // ErrReportDb
bool leavePlainOnError(TextView routine, const std::function<void()>& body); // ErrReport

// Any failure as the platform numbers it: no memory is 7, a failed file
// operation as fileError has it, anything else an inner error, 51.
RuntimeError asRuntimeError(const std::exception& failure);

}
