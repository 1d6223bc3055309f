// Forks a copy of the test program that does one thing and then ends at once, without
// destructors or flushing, like a killed program.
#pragma once
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace tolvek::test {

// The exit code of a child that wasn't made to die; not 1, which the sanitizers use.
inline constexpr int kGotThrough = 3;

// The child's exit code; 99 for an exception.
inline int inChild(const std::function<int()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        int code = 99;
        try {
            code = work();
        } catch (...) {
            _exit(99);
        }
        _exit(code);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}
