// Tries what a locked-down program can't do, and writes the result of each attempt
// to descriptor 3. Arguments: "locked" or "free", a file, a folder.
#include "platform/system/lock_down.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

void note(const std::string& what, long result)
{
    const int reason = errno;
    const std::string line = what + ": " + (result >= 0 ? "done" : strerrorname_np(reason)) + "\n";
    if (write(3, line.data(), line.size()) < 0) _exit(9);
}

// The kind of work that must still be possible.
void useMemory()
{
    std::vector<std::string> pieces;
    for (int i = 0; i < 2000; ++i)
        pieces.emplace_back(10000, 'x');
    note("memory", 0);
    char byte = 0;
    note("input", read(STDIN_FILENO, &byte, 1));
    note("place", lseek(STDIN_FILENO, 0, SEEK_END));
}

long mapCode()
{
    void* page = mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return page == MAP_FAILED ? -1 : 0;
}

// Doesn't use vfork, which might mislead a sanitizer.
long startProcess()
{
    const pid_t child = fork();
    if (child == 0) _exit(0);
    return child;
}

}

int main(int, char** words)
{
    const std::string made = std::string(words[3]) + "/made";
    if (words[1] == std::string("locked")) note("lock", tolvek::lockDown() ? 0 : -1);
    useMemory();
    note("open", open(words[2], O_RDONLY));
    note("create", open(made.c_str(), O_WRONLY | O_CREAT, 0600));
    note("remove", unlink(made.c_str()));
    note("open oneself", open("/proc/self/mem", O_RDWR));
    note("socket", socket(AF_INET, SOCK_STREAM, 0));
    note("local socket", socket(AF_UNIX, SOCK_STREAM, 0));
    note("parent", kill(getppid(), 0));
    note("code", mapCode());
    note("process", startProcess());
    char* const nothing[] = {nullptr};
    if (words[1] == std::string("locked")) note("program", execve("/bin/true", nothing, nothing));
    _exit(0);
}
