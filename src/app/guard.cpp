#include "app/guard.h"

#include "app/reports.h"

#include <new>
#include <system_error>

namespace tolvek {

namespace {

using Report = void (*)(TextView, const RuntimeError&);

bool reported(Report report, TextView routine, const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (const std::exception& failure) {
        report(routine, asRuntimeError(failure));
        return false;
    }
}

}

bool ResumeNext::operator()(const std::function<void()>& statement) const
{
    return reported(ErrReport, routine_, statement);
}

bool PassOver53::passed(const std::function<void()>& statement) const
{
    return reported(ErrReportDb, routine_, [&] {
        try {
            statement();
        } catch (const std::exception& failure) {
            // The number is tested after the conversion, so that a missing file
            // reported by the system layer (ENOENT) passes as well.
            if (asRuntimeError(failure).number() != 53) throw;
        }
    });
}

bool leaveOnError(TextView routine, const std::function<void()>& body)
{
    return reported(ErrReportDb, routine, body);
}

bool leavePlainOnError(TextView routine, const std::function<void()>& body)
{
    return reported(ErrReport, routine, body);
}

RuntimeError asRuntimeError(const std::exception& failure)
{
    if (const auto* known = dynamic_cast<const RuntimeError*>(&failure)) return *known;
    if (dynamic_cast<const std::bad_alloc*>(&failure))
        return RuntimeError(7, u"メモリが不足しています。", nullptr);
    if (const auto* system = dynamic_cast<const std::system_error*>(&failure))
        return fileError(system->code());
    return RuntimeError(51, u"内部エラーです。(" + fromUtf8(failure.what()) + u")", nullptr);
}

}
