// The process and its surroundings: end, sleep, folders, other programs, single
// instance, shared libraries.
#pragma once
#include "platform/system/file_lock.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

// Ends the process at once, running no destructor and no exit handler; what
// must reach the disk has been flushed before.
[[noreturn]] void leaveProcess(int code);

void sleepMilliseconds(int count);

// The folder in which the program was started. A link to the executable
// counts as the executable: its folder is the link's.
std::filesystem::path programFolder(const char* argv0);

// The Windows folder; empty on a system that has none. Tests set one.
std::filesystem::path windowsFolder();
void setWindowsFolder(std::filesystem::path folder);

// The whole path of an installed program, looked for as a shell does.
std::optional<std::filesystem::path> installedProgram(std::string_view name);

// Starts the program at that path with a window as it likes, doesn't wait for
// it, and gives its process id. It is no part of this program: it outlives it,
// has none of its files open, and leaves nothing behind when it ends. One that
// is missing or can't be run is std::system_error with the system's code. A
// Windows program (.exe) that the system can't run itself is run by the installed
// emulation layer, if there is one; the id is then that of the layer's process.
std::int32_t startProgram(const std::filesystem::path& program,
                          const std::vector<std::string>& arguments = {});

// One running copy of the program, by two locks that go with the process: one
// per user and name in the session's own folder, and one on a file in the
// program's folder (`home`), which keeps every other session, user and host away
// from the archive there. That file, NAME.lock, may be left over.
class SingleInstance {
public:
    SingleInstance(const std::string& name, const std::filesystem::path& home);
    // True also where no lock can be had: nothing can be written there either.
    bool isFirst() const { return !session_.isHeldElsewhere() && !home_.isHeldElsewhere(); }

private:
    FileLock session_, home_;
};

// A shared library loaded at run time. A missing one is std::system_error with
// no_such_file_or_directory; a missing symbol with function_not_supported.
class SharedLibrary {
public:
    explicit SharedLibrary(const std::filesystem::path& path);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    void* symbol(const char* name) const;
    // The file name of a library on this system: "libNAME.so", "NAME.dll".
    static std::string fileName(const std::string& name);

private:
    void* handle_ = nullptr;
};

}
