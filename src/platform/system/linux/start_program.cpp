#include "platform/system/files.h"
#include "platform/system/linux/system_failure.h"
#include "platform/system/process.h"

#include <algorithm>
#include <cctype>
#include <future>
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

void waitForEnd(pid_t id)
{
    while (waitpid(id, nullptr, 0) == -1 && errno == EINTR) {
    }
}

}

// An ended child must be waited for, whenever that is. A detached thread does it,
// and ends with this program if that ends first.
std::int32_t startProgram(const std::filesystem::path& program,
                          const std::vector<std::string>& arguments)
{
    std::promise<pid_t> started;
    std::future<pid_t> id = started.get_future();
    std::thread([started = std::move(started), program, arguments]() mutable {
        pid_t child = 0;
        try {
            child = spawnAny(program, std::move(arguments));
        } catch (...) {
            started.set_exception(std::current_exception());
            return;
        }
        started.set_value(child);
        waitForEnd(child);
    }).detach();
    return id.get();
}

}
