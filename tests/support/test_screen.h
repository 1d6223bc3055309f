// A screen for a test, invisible to the user; it ends with the object and with the
// process.
#pragma once
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace tolvek::test {

class TestScreen {
public:
    // Throws when the server isn't installed or doesn't start.
    explicit TestScreen(const std::vector<std::string>& more = {})
    {
        int ends[2];
        if (pipe(ends) != 0) throw std::runtime_error("no pipe");
        server_ = fork();
        if (server_ == 0) run(ends[1], more);
        close(ends[1]);
        name_ = ":" + reported(ends[0]);
        close(ends[0]);
        if (name_ == ":") throw std::runtime_error("Xvfb doesn't run: is it installed?");
    }
    ~TestScreen() { end(); }
    TestScreen(const TestScreen&) = delete;
    TestScreen& operator=(const TestScreen&) = delete;

    const std::string& name() const { return name_; }
    void end()
    {
        if (server_ <= 0) return;
        kill(server_, SIGKILL);
        waitpid(server_, nullptr, 0);
        server_ = -1;
    }

private:
    [[noreturn]] static void run(int out, const std::vector<std::string>& more)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const std::string number = std::to_string(out);
        std::vector<const char*> words{"Xvfb",       "-displayfd", number.c_str(), "-screen", "0",
                                       "800x600x24", "-nolisten",  "tcp",          "-noreset"};
        for (const std::string& word : more)
            words.push_back(word.c_str());
        words.push_back(nullptr);
        // Must be open, or one of the server's files would get its number.
        if (!freopen("/dev/null", "w", stderr)) _exit(127);
        execvp(words[0], const_cast<char* const*>(words.data()));
        _exit(127);
    }
    // The server writes its number once it is ready.
    static std::string reported(int in)
    {
        std::string digits;
        for (char c = 0; read(in, &c, 1) == 1 && c != '\n';)
            digits += c;
        return digits;
    }

    pid_t server_ = -1;
    std::string name_;
};

}
