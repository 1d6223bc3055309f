// A second process for a test: a fork of this one that runs a function and then ends at
// once, without destructors or flushing, like a killed program.
#pragma once
#include "platform/system/process.h"

#include <csignal>
#include <functional>
#include <stdexcept>

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tolvek::test {

// The exit code of a child that wasn't made to die; not 1, which the sanitizers use.
inline constexpr int kGotThrough = 3;

// The exit code of a child whose work threw.
inline constexpr int kThrew = 99;

#if defined(_WIN32)
// The system can't copy a process. The tests that need one are named in
// windows/left_out.txt.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<int()>&)
    {
        throw std::logic_error("no copy of a process on this system");
    }
    int exitCode() { return -1; }
    void kill() {}
};

class Signal {
public:
    void send(char = '!') {}
    char wait() { return '\0'; }
};
#else
class ChildProcess {
public:
    explicit ChildProcess(const std::function<int()>& work) : id_(fork())
    {
        if (id_ == 0) leaveProcess(codeOf(work));
    }
    ~ChildProcess()
    {
        if (id_ > 0) kill();
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool isRunning() const
    {
        siginfo_t ended{};
        waitid(P_PID, static_cast<id_t>(id_), &ended, WEXITED | WNOHANG | WNOWAIT);
        return ended.si_pid == 0;
    }
    int exitCode()
    {
        int status = 0;
        waitpid(id_, &status, 0);
        id_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void kill()
    {
        ::kill(id_, SIGKILL);
        exitCode();
    }

private:
    // An exception must not reach the test framework, or the child runs the other tests.
    static int codeOf(const std::function<int()>& work)
    {
        try {
            return work();
        } catch (...) {
            return kThrew;
        }
    }

    pid_t id_;
};

// One process waits until the other has sent its signal.
class Signal {
public:
    Signal()
    {
        if (pipe(ends_) != 0) std::abort();
    }
    ~Signal()
    {
        close(ends_[0]);
        close(ends_[1]);
    }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    void send(char word = '!')
    {
        if (write(ends_[1], &word, 1) != 1) std::abort();
    }
    // Whatever this process prints is its signal, also after it has executed
    // another program.
    void sendFromOutput() { dup2(ends_[1], STDOUT_FILENO); }
    char wait()
    {
        char word = 0;
        return read(ends_[0], &word, 1) == 1 ? word : '\0';
    }

private:
    int ends_[2];
};
#endif

// The exit code of a child that did the work.
inline int inChild(const std::function<int()>& work)
{
    return ChildProcess(work).exitCode();
}

}
