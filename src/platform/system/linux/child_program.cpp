#include "platform/system/child_program.h"

#include "platform/system/files.h"
#include "platform/system/linux/descriptor.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>

namespace tolvek {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr int kFailureDescriptor = kResultDescriptor + 1;
constexpr int kFirstForeign = kFailureDescriptor + 1;
constexpr rlim_t kLargestFile = 1 << 20; // bytes; the child's own memory files count too
constexpr rlim_t kOpenFiles = 16;        // enough to load the program and its libraries
constexpr auto kNap = Milliseconds(2);

struct Pipe {
    Pipe()
    {
        std::array<int, 2> ends{};
        systemCall({}, [&] { return pipe2(ends.data(), O_CLOEXEC); });
        const Descriptor first(ends[0]), second(ends[1]);
        reading = first.movedUp(kFirstForeign);
        writing = second.movedUp(kFirstForeign);
    }
    Descriptor reading, writing;
};

Descriptor opened(const std::filesystem::path& path, int flags)
{
    const Descriptor low(systemCall(path, [&] { return open(path.c_str(), flags | O_CLOEXEC); }));
    return low.movedUp(kFirstForeign);
}

// Everything that the child needs between fork and exec, where it must not allocate
// memory.
struct Start {
    const char* program;
    std::vector<char*> arguments;
    const ChildLimits& limits;
    const Descriptor& input;
    const Descriptor& nowhere;
    const Pipe& result;
    const Pipe& failure;
    pid_t parent;
};

void setLimit(__rlimit_resource resource, rlim_t value)
{
    rlimit limit{value, value};
    if (setrlimit(resource, &limit) != 0) _exit(127);
}

void applyLimits(const ChildLimits& limits)
{
    setLimit(RLIMIT_CORE, 0);
    setLimit(RLIMIT_FSIZE, kLargestFile);
    setLimit(RLIMIT_NOFILE, kOpenFiles);
    if (limits.isAlone) setLimit(RLIMIT_NPROC, 0);
    if (limits.addressSpace) setLimit(RLIMIT_AS, limits.addressSpace);
    if (!limits.processorSeconds) return;
    // At the soft limit the child gets SIGXCPU, which endOf() recognises. At the
    // hard limit it would get SIGKILL, which looks like a kill from outside.
    rlimit processor{limits.processorSeconds, limits.processorSeconds + 5};
    if (setrlimit(RLIMIT_CPU, &processor) != 0) _exit(127);
}

// The child must not inherit which signals this process ignores or blocks.
void restoreSignals()
{
    for (const int number : {SIGXCPU, SIGXFSZ, SIGPIPE, SIGTERM, SIGINT, SIGHUP, SIGQUIT})
        signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void takeDescriptors(const Start& start)
{
    // The sources are all numbered kFirstForeign or higher, so no dup2 overwrites
    // one of them.
    dup2(start.input.number(), STDIN_FILENO);
    dup2(start.nowhere.number(), STDOUT_FILENO);
    dup2(start.nowhere.number(), STDERR_FILENO);
    dup2(start.result.writing.number(), kResultDescriptor);
    dup2(start.failure.writing.number(), kFailureDescriptor);
    fcntl(kFailureDescriptor, F_SETFD, FD_CLOEXEC);
    close_range(kFirstForeign, ~0U, 0);
}

[[noreturn]] void becomeProgram(const Start& start)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (getppid() != start.parent) _exit(127); // the parent ended before PR_SET_PDEATHSIG was set
    takeDescriptors(start);
    restoreSignals();
    applyLimits(start.limits);
    char* noEnvironment[] = {nullptr};
    execve(start.program, start.arguments.data(), noEnvironment);
    const int reason = errno;
    const auto written = write(kFailureDescriptor, &reason, sizeof reason);
    _exit(written > 0 ? 127 : 126);
}

// A child process that hasn't been waited for. The destructor kills it.
class Child {
public:
    explicit Child(pid_t id) : id_(id) {}
    ~Child()
    {
        if (id_ > 0) stop();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void stop()
    {
        kill(id_, SIGKILL);
        while (waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
        }
        id_ = 0;
    }
    bool hasEnded(int& status)
    {
        const pid_t ended = systemCall({}, [&] { return waitpid(id_, &status, WNOHANG); });
        if (ended > 0) id_ = 0;
        return ended > 0;
    }

private:
    pid_t id_;
};

// The read ends when the last writing end is closed: on exec (FD_CLOEXEC) or on the
// child's exit.
void requireStarted(Pipe& failure)
{
    failure.writing.close();
    int reason = 0;
    const auto size =
        systemCall({}, [&] { return read(failure.reading.number(), &reason, sizeof reason); });
    if (size > 0) throwSystemError(reason, {});
}

// Waits until there is something to read and deducts the time from the child's
// patience. False when the patience is used up.
bool awaitBytes(const Descriptor& reading, Milliseconds& patience)
{
    const auto begin = Clock::now();
    pollfd waited{reading.number(), POLLIN, 0};
    const int ready =
        systemCall({}, [&] { return poll(&waited, 1, static_cast<int>(patience.count())); });
    patience -= std::chrono::duration_cast<Milliseconds>(Clock::now() - begin);
    return ready > 0 && patience.count() >= 0;
}

bool passOn(const Descriptor& reading, Milliseconds& patience,
            const std::function<void(std::string_view)>& result)
{
    std::vector<char> buffer(1 << 16);
    for (;;) {
        if (!awaitBytes(reading, patience)) return false;
        const auto size =
            systemCall({}, [&] { return read(reading.number(), buffer.data(), buffer.size()); });
        if (size == 0) return true;
        result({buffer.data(), static_cast<std::size_t>(size)});
    }
}

ChildEnd endOf(int status)
{
    using How = ChildEnd::How;
    if (WIFEXITED(status)) return {How::Exited, WEXITSTATUS(status)};
    const int number = WTERMSIG(status);
    // The signal of the processor limit.
    if (number == SIGXCPU) return {How::OutOfTime, 0};
    for (const int outer : {SIGKILL, SIGTERM, SIGINT, SIGHUP, SIGQUIT})
        if (number == outer) return {How::Stopped, 0};
    return {How::Crashed, 0};
}

// The child has closed its result, so it will end soon, or it hangs.
ChildEnd awaited(Child& child, Milliseconds patience)
{
    int status = 0;
    // Polled, because waitpid has no timeout.
    for (const auto until = Clock::now() + patience; !child.hasEnded(status);) {
        if (Clock::now() >= until) return {ChildEnd::How::OutOfTime, 0};
        std::this_thread::sleep_for(kNap);
    }
    return endOf(status);
}

std::vector<char*> argumentsOf(const std::string& program, const std::vector<std::string>& others)
{
    std::vector<char*> all{const_cast<char*>(program.c_str())}; // exec's interface isn't const
    for (const std::string& argument : others)
        all.push_back(const_cast<char*>(argument.c_str()));
    all.push_back(nullptr);
    return all;
}

pid_t started(const Start& start)
{
    const pid_t id = fork();
    if (id == 0) becomeProgram(start);
    if (id < 0) throwSystemError(errno, start.program);
    return id;
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
    // O_NONBLOCK: opening a pipe that nobody writes to would otherwise block.
    probeFile(FileOperation::Open, input);
    const Descriptor file = opened(input, O_RDONLY | O_NONBLOCK);
    Pipe answer, failure;
    std::unique_ptr<Child> child;
    startStep([&] {
        probeFile(FileOperation::Open, program);
        const Descriptor nowhere = opened("/dev/null", O_RDWR);
        const Start start{program.c_str(), argumentsOf(program.native(), arguments),
                          limits,          file,
                          nowhere,         answer,
                          failure,         getpid()};
        child = std::make_unique<Child>(started(start));
        // Otherwise the result would never come to an end for this process.
        answer.writing.close();
        requireStarted(failure);
    });
    Milliseconds patience = limits.patience;
    if (!passOn(answer.reading, patience, result)) return {ChildEnd::How::OutOfTime, 0};
    return awaited(*child, patience);
}

std::string programFileName(const std::string& name)
{
    return name;
}

}
