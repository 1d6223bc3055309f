// A copy of the test program that does one thing and dies at once, without
// destructors or flushing, as a killed program does.
#pragma once
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace tolvek::test {

// What a child answers that wasn't made to die; not 1, which a sanitizer ends with.
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
