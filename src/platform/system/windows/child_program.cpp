#include "platform/system/child_program.h"

#include "platform/system/files.h"
#include "platform/system/windows/child_process.h"
#include "platform/system/windows/wide_path.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace tolvek {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;
using How = ChildEnd::How;

constexpr Milliseconds kWatch{50}; // between two looks at what the child uses

Handle opened(const std::filesystem::path& path)
{
    constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    Handle file(::CreateFileW(widePath(path).c_str(), GENERIC_READ, shareAll, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throwSystemError(::GetLastError(), path);
    return file;
}

// The job stops a child at its limits; where it doesn't, this does.
std::optional<ChildEnd> atLimit(const ChildProcess& child)
{
    if (child.isBeyondTime()) return ChildEnd{How::OutOfTime, 0};
    if (child.isBeyondMemory()) return ChildEnd{How::Crashed, 0};
    return std::nullopt;
}

// Whether the result came to its end; otherwise how the child is to be reported.
std::optional<ChildEnd> passOn(ResultPipe& pipe, const ChildProcess& child, Milliseconds& patience,
                               const std::function<void(std::string_view)>& result)
{
    for (;;) {
        std::string_view bytes;
        const auto begin = Clock::now();
        const auto state = pipe.next(std::clamp(patience, Milliseconds(0), kWatch), bytes);
        patience -= std::chrono::duration_cast<Milliseconds>(Clock::now() - begin);
        if (state == ResultPipe::State::End) return std::nullopt;
        if (state == ResultPipe::State::Bytes) result(bytes);
        if (const auto end = atLimit(child)) return end;
        if (state == ResultPipe::State::Nothing && patience.count() <= 0)
            return ChildEnd{How::OutOfTime, 0};
    }
}

// The system has no signals: how a process ended is in its exit code.
ChildEnd endOf(DWORD code)
{
    constexpr DWORD kControlC = 0xC000013A, kLogOff = 0x40010004, kByJob = 1816;
    constexpr DWORD kFirstFailure = 0xC0000000;
    if (code == kControlC || code == kLogOff) return {How::Stopped, 0};
    if (code == kByJob) return {How::OutOfTime, 0};
    if (code >= kFirstFailure) return {How::Crashed, 0};
    return {How::Exited, static_cast<int>(code)};
}

// The child has closed its result, so it will end soon, or it hangs.
ChildEnd awaited(const ChildProcess& child, Milliseconds patience)
{
    const auto until = Clock::now() + patience;
    while (!child.hasEnded(kWatch)) {
        if (const auto end = atLimit(child)) return *end;
        if (Clock::now() >= until) return {How::OutOfTime, 0};
    }
    return endOf(child.exitCode());
}

template <class Work> auto startStep(const Work& work)
{
    try {
        return work();
    } catch (const std::system_error& error) {
        throw ChildStartError(error.code(), error.what());
    }
}

}

ChildEnd runChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  const std::filesystem::path& input, const ChildLimits& limits,
                  const std::function<void(std::string_view)>& result)
{
    probeFile(FileOperation::Open, input);
    const Handle file = opened(input);
    ResultPipe pipe;
    std::unique_ptr<ChildProcess> child;
    startStep([&] {
        probeFile(FileOperation::Open, program);
        child =
            std::make_unique<ChildProcess>(program, arguments, file.get(), pipe.writing(), limits);
        pipe.closeWriting();
    });
    Milliseconds patience = limits.patience;
    if (const auto end = passOn(pipe, *child, patience, result)) return *end;
    return awaited(*child, patience);
}

std::string programFileName(const std::string& name)
{
    return name + ".exe";
}

}
