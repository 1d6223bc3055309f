#include "platform/system/windows/child_process.h"

#include "platform/system/windows/command_line.h"
#include "platform/system/windows/wide_path.h"

#include <psapi.h>

#include <atomic>
#include <cstring>

namespace tolvek {

namespace {

constexpr std::size_t kPieceSize = 1 << 16;
constexpr std::uint64_t kTicksPerSecond = 10'000'000;

std::wstring unusedPipeName()
{
    static std::atomic<unsigned> last{0};
    return LR"(\\.\pipe\Tolvek-)" + std::to_wstring(::GetCurrentProcessId()) + L'-' +
           std::to_wstring(++last);
}

SECURITY_ATTRIBUTES inheritable()
{
    return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
}

// The child's end of the input, which it may inherit.
Handle inheritableCopy(HANDLE handle)
{
    HANDLE copy = nullptr;
    const HANDLE self = ::GetCurrentProcess();
    systemCall({}, ::DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS));
    return Handle(copy);
}

Handle nowhere()
{
    SECURITY_ATTRIBUTES inherited = inheritable();
    Handle device(::CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING, 0,
                                nullptr));
    if (!device) throwSystemError(::GetLastError(), "NUL");
    return device;
}

// How the C library of a child learns of its descriptors beyond the three standard ones: a
// count, a flag for each, a handle for each.
std::vector<BYTE> descriptorTable(const std::vector<HANDLE>& handles)
{
    constexpr BYTE kOpen = 1, kPipe = 8;
    const int count = static_cast<int>(handles.size());
    std::vector<BYTE> table(sizeof count + handles.size() * (1 + sizeof(HANDLE)));
    std::memcpy(table.data(), &count, sizeof count);
    for (std::size_t i = 0; i < handles.size(); ++i) {
        table[sizeof count + i] = i == kResultDescriptor ? kOpen | kPipe : kOpen;
        std::memcpy(&table[sizeof count + handles.size() + i * sizeof(HANDLE)], &handles[i],
                    sizeof(HANDLE));
    }
    return table;
}

// The list of what the child inherits: everything else that is inheritable stays here.
class InheritedHandles {
public:
    explicit InheritedHandles(std::vector<HANDLE> handles) : handles_(std::move(handles))
    {
        SIZE_T size = 0;
        ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        bytes_.resize(size);
        systemCall({}, ::InitializeProcThreadAttributeList(list(), 1, 0, &size));
        systemCall({}, ::UpdateProcThreadAttribute(
                           list(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_.data(),
                           handles_.size() * sizeof(HANDLE), nullptr, nullptr));
    }
    ~InheritedHandles() { ::DeleteProcThreadAttributeList(list()); }
    InheritedHandles(const InheritedHandles&) = delete;
    InheritedHandles& operator=(const InheritedHandles&) = delete;
    LPPROC_THREAD_ATTRIBUTE_LIST list()
    {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(bytes_.data());
    }

private:
    std::vector<HANDLE> handles_;
    std::vector<std::byte> bytes_;
};

Handle limitedJob(const ChildLimits& limits)
{
    Handle job(::CreateJobObjectW(nullptr, nullptr));
    if (!job) throwSystemError(::GetLastError(), {});
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION about{};
    JOBOBJECT_BASIC_LIMIT_INFORMATION& basic = about.BasicLimitInformation;
    // No box about an unhandled exception; and the end of the child with this process.
    basic.LimitFlags =
        JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    if (limits.addressSpace) basic.LimitFlags |= JOB_OBJECT_LIMIT_PROCESS_MEMORY;
    about.ProcessMemoryLimit = static_cast<SIZE_T>(limits.addressSpace);
    if (limits.processorSeconds) basic.LimitFlags |= JOB_OBJECT_LIMIT_PROCESS_TIME;
    basic.PerProcessUserTimeLimit.QuadPart =
        static_cast<LONGLONG>(limits.processorSeconds * kTicksPerSecond);
    if (limits.isAlone) basic.LimitFlags |= JOB_OBJECT_LIMIT_ACTIVE_PROCESS;
    basic.ActiveProcessLimit = 1;
    systemCall({}, ::SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &about,
                                             sizeof about));
    return job;
}

std::uint64_t ticks(const FILETIME& time)
{
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

}

ResultPipe::ResultPipe() : buffer_(kPieceSize)
{
    const std::wstring name = unusedPipeName();
    reading_ = Handle(::CreateNamedPipeW(
        name.c_str(), PIPE_ACCESS_INBOUND | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
        PIPE_TYPE_BYTE | PIPE_REJECT_REMOTE_CLIENTS, 1, kPieceSize, kPieceSize, 0, nullptr));
    if (!reading_) throwSystemError(::GetLastError(), {});
    SECURITY_ATTRIBUTES inherited = inheritable();
    writing_ = Handle(
        ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, &inherited, OPEN_EXISTING, 0, nullptr));
    if (!writing_) throwSystemError(::GetLastError(), {});
    ready_ = Handle(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!ready_) throwSystemError(::GetLastError(), {});
}

// The system must not write into the buffer after this.
ResultPipe::~ResultPipe()
{
    DWORD count = 0;
    if (isPending_ && !isAtEnd_ && ::CancelIoEx(reading_.get(), &pending_))
        ::GetOverlappedResult(reading_.get(), &pending_, &count, TRUE);
}

void ResultPipe::startReading()
{
    pending_ = {};
    pending_.hEvent = ready_.get();
    isPending_ = true;
    if (::ReadFile(reading_.get(), buffer_.data(), kPieceSize, nullptr, &pending_)) return;
    const DWORD code = ::GetLastError();
    if (code == ERROR_IO_PENDING) return;
    if (code != ERROR_BROKEN_PIPE && code != ERROR_HANDLE_EOF) throwSystemError(code, {});
    isAtEnd_ = true;
}

ResultPipe::State ResultPipe::next(std::chrono::milliseconds patience, std::string_view& bytes)
{
    if (!isPending_) startReading();
    if (isAtEnd_) return State::End;
    if (::WaitForSingleObject(ready_.get(), static_cast<DWORD>(patience.count())) != WAIT_OBJECT_0)
        return State::Nothing;
    DWORD count = 0;
    isPending_ = false;
    if (!::GetOverlappedResult(reading_.get(), &pending_, &count, FALSE)) {
        const DWORD code = ::GetLastError();
        if (code != ERROR_BROKEN_PIPE && code != ERROR_HANDLE_EOF) throwSystemError(code, {});
        return State::End;
    }
    bytes = {buffer_.data(), count};
    return State::Bytes;
}

ChildProcess::ChildProcess(const std::filesystem::path& program,
                           const std::vector<std::string>& arguments, HANDLE input, HANDLE result,
                           const ChildLimits& limits)
    : limits_(limits), job_(limitedJob(limits))
{
    const Handle in = inheritableCopy(input), none = nowhere();
    const std::vector<HANDLE> descriptors{in.get(), none.get(), none.get(), result};
    std::vector<BYTE> table = descriptorTable(descriptors);
    InheritedHandles inherited({in.get(), none.get(), result});
    STARTUPINFOEXW start{};
    start.StartupInfo.cb = sizeof start;
    start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    start.StartupInfo.hStdInput = in.get();
    start.StartupInfo.hStdOutput = start.StartupInfo.hStdError = none.get();
    start.StartupInfo.cbReserved2 = static_cast<WORD>(table.size());
    start.StartupInfo.lpReserved2 = table.data();
    start.lpAttributeList = inherited.list();
    std::wstring line = commandLine(program, arguments);
    wchar_t noEnvironment[] = L"\0";
    PROCESS_INFORMATION made{};
    // Suspended until it is in the job, so that no instruction of it runs without limits.
    systemCall(program,
               ::CreateProcessW(widePath(program).c_str(), line.data(), nullptr, nullptr, TRUE,
                                CREATE_SUSPENDED | CREATE_NO_WINDOW | CREATE_UNICODE_ENVIRONMENT |
                                    EXTENDED_STARTUPINFO_PRESENT | CREATE_DEFAULT_ERROR_MODE,
                                noEnvironment, nullptr, &start.StartupInfo, &made));
    process_ = Handle(made.hProcess);
    const Handle thread(made.hThread);
    if (!::AssignProcessToJobObject(job_.get(), process_.get())) {
        const DWORD code = ::GetLastError();
        ::TerminateProcess(process_.get(), 0);
        throwSystemError(code, program);
    }
    ::ResumeThread(thread.get());
}

bool ChildProcess::isBeyondTime() const
{
    FILETIME made{}, ended{}, kernel{}, user{};
    return limits_.processorSeconds &&
           ::GetProcessTimes(process_.get(), &made, &ended, &kernel, &user) &&
           ticks(kernel) + ticks(user) > limits_.processorSeconds * kTicksPerSecond;
}

bool ChildProcess::isBeyondMemory() const
{
    PROCESS_MEMORY_COUNTERS memory{};
    return limits_.addressSpace &&
           ::K32GetProcessMemoryInfo(process_.get(), &memory, sizeof memory) &&
           memory.PagefileUsage > limits_.addressSpace;
}

bool ChildProcess::hasEnded(std::chrono::milliseconds patience) const
{
    return ::WaitForSingleObject(process_.get(), static_cast<DWORD>(patience.count())) ==
           WAIT_OBJECT_0;
}

DWORD ChildProcess::exitCode() const
{
    DWORD code = 0;
    systemCall({}, ::GetExitCodeProcess(process_.get(), &code));
    return code;
}

}
