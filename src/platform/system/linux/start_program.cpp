#include "platform/system/files.h"
#include "platform/system/linux/system_failure.h"
#include "platform/system/process.h"

#include <algorithm>
#include <cctype>
#include <future>
#include <map>
#include <mutex>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tolvek {

namespace {

constexpr int kFirstOwnFile = STDERR_FILENO + 1;

void must(int result)
{
    if (result != 0) throwSystemError(result, {});
}

// Starts the program in a session of its own, so that closing the terminal doesn't
// end it.
class Attributes {
public:
    Attributes()
    {
        must(posix_spawnattr_init(&attributes_));
        must(posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID));
    }
    ~Attributes() { posix_spawnattr_destroy(&attributes_); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_;
};

// Closes this program's files in the child; otherwise a lock or a pipe would stay
// open through it.
class FileActions {
public:
    FileActions()
    {
        must(posix_spawn_file_actions_init(&actions_));
        must(posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOwnFile));
    }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

pid_t spawn(const std::filesystem::path& program, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), program.string());
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    const FileActions actions;
    const Attributes attributes;
    pid_t id = 0;
    const int failure =
        posix_spawn(&id, program.c_str(), actions.get(), attributes.get(), words.data(), environ);
    if (failure != 0) throwSystemError(failure, program);
    return id;
}

bool endsInExe(const std::filesystem::path& program)
{
    std::string ending = program.extension().string();
    std::ranges::transform(ending, ending.begin(), [](unsigned char c) { return std::tolower(c); });
    return ending == ".exe";
}

bool isWindowsProgram(const std::filesystem::path& program)
{
    if (!endsInExe(program)) return false;
    char head[2] = {};
    OpenFile file(program, OpenFile::Mode::Read);
    return file.read(head, sizeof head) == sizeof head && std::string_view(head, 2) == "MZ";
}

// The installed emulation layer, for a Windows program that the system can't
// execute or that isn't marked as executable.
std::optional<std::filesystem::path> emulatorFor(const std::filesystem::path& program,
                                                 const std::system_error& failure)
{
    const bool foreign = failure.code() == std::errc::executable_format_error ||
                         failure.code() == std::errc::permission_denied;
    try {
        return foreign && isWindowsProgram(program) ? installedProgram("wine") : std::nullopt;
    } catch (const std::system_error&) {
        return std::nullopt; // not readable: the first failure is the one to report
    }
}

pid_t spawnAny(const std::filesystem::path& program, std::vector<std::string> arguments)
{
    try {
        return spawn(program, arguments);
    } catch (const std::system_error& failure) {
        const auto emulator = emulatorFor(program, failure);
        if (!emulator) throw;
        arguments.insert(arguments.begin(), program.string());
        return spawn(*emulator, std::move(arguments));
    }
}

// The processes that have been started and run. Never destroyed, because threads use
// it up to the end of the program.
class Started {
public:
    void add(pid_t id)
    {
        const std::lock_guard guard(mutex_);
        times_[id] = std::chrono::steady_clock::now();
    }
    void remove(pid_t id)
    {
        const std::lock_guard guard(mutex_);
        times_.erase(id);
    }
    std::optional<std::chrono::milliseconds> age(pid_t id)
    {
        const std::lock_guard guard(mutex_);
        const auto found = times_.find(id);
        if (found == times_.end()) return std::nullopt;
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - found->second);
    }

private:
    std::mutex mutex_;
    std::map<pid_t, std::chrono::steady_clock::time_point> times_;
};

Started& started()
{
    static auto* const all = new Started;
    return *all;
}

void waitForEnd(pid_t id)
{
    siginfo_t ended;
    // Removed before the system may give its number to another process.
    while (waitid(P_PID, static_cast<id_t>(id), &ended, WEXITED | WNOWAIT) == -1 &&
           errno == EINTR) {
    }
    started().remove(id);
    while (waitpid(id, nullptr, 0) == -1 && errno == EINTR) {
    }
}

}

std::optional<std::chrono::milliseconds> timeSinceStart(std::int32_t processId)
{
    return started().age(processId);
}

// An ended child must be waited for, whenever that is. A detached thread does it,
// and ends with this program if that ends first.
std::int32_t startProgram(const std::filesystem::path& program,
                          const std::vector<std::string>& arguments)
{
    std::promise<pid_t> running;
    std::future<pid_t> id = running.get_future();
    std::thread([running = std::move(running), program, arguments]() mutable {
        pid_t child = 0;
        try {
            child = spawnAny(program, std::move(arguments));
        } catch (...) {
            running.set_exception(std::current_exception());
            return;
        }
        started().add(child);
        running.set_value(child);
        waitForEnd(child);
    }).detach();
    return id.get();
}

}
