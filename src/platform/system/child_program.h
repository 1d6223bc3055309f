// Runs a program as a child process on one file, under limits: for work on a file
// that this process doesn't trust. Whatever happens to the child, the caller gets a
// value or an exception.
//
// The child reads the file as its standard input and writes its result to
// kResultDescriptor. Its standard output and standard error are discarded. It
// inherits no other descriptor and no environment, can't write a file larger than 1
// MB and can't gain privileges. It is killed when this process ends and when the
// reader of its result throws.
#pragma once
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace tolvek {

inline constexpr int kResultDescriptor = 3;

struct ChildLimits {
    std::uintmax_t addressSpace = 0; // bytes; 0 for no limit
    std::uintmax_t processorSeconds = 0;
    // Counts the child's time only, not the time that the reader of the result
    // takes.
    std::chrono::milliseconds patience = std::chrono::minutes(1);
    bool isAlone = false; // may start no process or thread (root still can)
};

struct ChildEnd {
    enum class How {
        Exited,    // by itself, with an exit code
        Crashed,   // by a signal that it caused itself
        Stopped,   // by a signal from outside: from a user, or from the system when memory is short
        OutOfTime, // at one of its time limits
    };
    How how;
    int code; // Exited: the exit code
};

// The child couldn't be started: the program is missing or not executable, or no
// process or memory was available.
class ChildStartError : public std::system_error {
public:
    using std::system_error::system_error;
};

// Returns when the child has ended. An input file that can't be opened is reported
// as std::system_error, like any other file. The probe is asked before the input
// and the program are opened.
ChildEnd runChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  const std::filesystem::path& input, const ChildLimits& limits,
                  const std::function<void(std::string_view)>& result);

// The file name of a program on this system, "NAME" or "NAME.exe" for example.
std::string programFileName(const std::string& name);

}
