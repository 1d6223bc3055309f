// A child process in a job, with a pipe for its result; see child_program.h.
#pragma once
#include "platform/system/child_program.h"
#include "platform/system/windows/handle.h"

namespace tolvek {

// The reading end can be waited for with a time-out, which the system's plain pipes don't
// allow.
class ResultPipe {
public:
    ResultPipe();
    ~ResultPipe();
    ResultPipe(const ResultPipe&) = delete;
    ResultPipe& operator=(const ResultPipe&) = delete;
    HANDLE writing() const { return writing_.get(); }
    // Otherwise the result would never come to an end for this process.
    void closeWriting() { writing_.close(); }

    enum class State { Bytes, End, Nothing };
    // Waits for the next bytes of the result, which are then in `bytes`.
    State next(std::chrono::milliseconds patience, std::string_view& bytes);

private:
    void startReading();

    Handle reading_, writing_, ready_;
    OVERLAPPED pending_{};
    bool isPending_ = false;
    bool isAtEnd_ = false;
    std::vector<char> buffer_;
};

// The process ends with this object and with this process.
class ChildProcess {
public:
    ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                 HANDLE input, HANDLE result, const ChildLimits& limits);

    // At one of the limits that the system may not watch itself.
    bool isBeyondTime() const;
    bool isBeyondMemory() const;
    bool hasEnded(std::chrono::milliseconds patience) const;
    DWORD exitCode() const;

private:
    const ChildLimits& limits_;
    Handle job_, process_;
};

}
