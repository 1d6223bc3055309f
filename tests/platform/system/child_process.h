// A second process for a test: a fork of this one that runs a function and exits.
#pragma once
#include "platform/system/process.h"

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace tolvek::test {

class ChildProcess {
public:
    explicit ChildProcess(const std::function<int()>& run) : id_(fork())
    {
        if (id_ == 0) leaveProcess(run());
    }
    ~ChildProcess()
    {
        if (id_ > 0) kill();
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

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

}
