// The process and its environment: exit, sleep, folders, other programs, single
// instance, shared libraries.
#pragma once
#include "platform/system/file_lock.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

// Ends the process at once without running destructors or exit handlers. The caller
// has already flushed whatever must reach the disk.
[[noreturn]] void leaveProcess(int code);

void sleepMilliseconds(int count);

// The folder of the program's executable. If it was started through a link, the
// link's folder.
std::filesystem::path programFolder(const char* argv0);

// The Windows folder; empty on a system that has none.
std::filesystem::path windowsFolder();

// The full path of an installed program, searched for as a shell does.
std::optional<std::filesystem::path> installedProgram(std::string_view name);

// Starts the program with a window of its own choice, doesn't wait for it, and
// returns its process id. The new process is independent: it outlives this program,
// inherits none of its open files and leaves no zombie when it ends. A program that
// is missing or can't be run throws std::system_error with the system's error code.
// A Windows program (.exe) that the system can't run itself is run by the installed
// emulation layer, if there is one; the id is then that of the layer's process.
std::int32_t startProgram(const std::filesystem::path& program,
                          const std::vector<std::string>& arguments = {});

// The time since startProgram started that process; nothing if it didn't, or if the
// process has ended.
std::optional<std::chrono::milliseconds> timeSinceStart(std::int32_t processId);

// Detects other running instances of the program with locks that end with the
// process: one per user and name (a file in the session's folder, or a named object of
// the system), one on a file in the program's folder (`home`), which protects the archive there
// from other sessions, users and hosts, and one beside the archive itself, to which other folders
// may link. These files, NAME.lock and the archive's with .lock as its extension, may be left over.
class SingleInstance {
public:
    SingleInstance(const std::string& name, const std::filesystem::path& home,
                   const std::filesystem::path& archive = {});
    // Also true if no lock can be taken, because then nothing can be written there
    // either.
    bool isFirst() const;

private:
    static std::string lockName(std::string name);
    void takeForUser(const std::string& name);
    void take(const std::filesystem::path& file);

    bool isTakenForUser_ = false;
    std::shared_ptr<void> userLock_; // where that lock isn't a file
    std::vector<std::filesystem::path> files_;
    std::vector<FileLock> locks_;
};

// A shared library loaded at run time. A missing library throws std::system_error
// with no_such_file_or_directory, a missing symbol with function_not_supported.
class SharedLibrary {
public:
    explicit SharedLibrary(const std::filesystem::path& path);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    void* symbol(const char* name) const;
    // The file name of a library on this system, "libNAME.so" or "NAME.dll" for
    // example.
    static std::string fileName(const std::string& name);

private:
    void* handle_ = nullptr;
};

}
