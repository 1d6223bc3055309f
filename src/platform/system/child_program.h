// A program run as a child on one file, under limits: for work on a file that
// isn't trusted within this process. Whatever happens to the child, the answer
// here is a value or an exception.
//
// The child has the file as its standard input and writes what it finds out to
// kResultDescriptor; its other outputs go nowhere, it inherits nothing else, no
// environment either, can write no file worth the name and gain no rights. It ends with this
// process, and with the exception that its result's reader throws.
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
    // For the child alone: the time that the result's reader takes doesn't count.
    std::chrono::milliseconds patience = std::chrono::minutes(1);
    bool isAlone = false; // no process or thread of its own (root can, all the same)
};

struct ChildEnd {
    enum class How {
        Exited,    // by itself, with a code
        Crashed,   // by a signal that it drew upon itself
        Stopped,   // by a signal from outside: a user's, the system's when memory is short
        OutOfTime, // at one of its time limits
    };
    How how;
    int code; // Exited: the exit code
};

// The child didn't come into being: no such program, not one that can be run,
// no process or memory left.
class ChildStartError : public std::system_error {
public:
    using std::system_error::system_error;
};

// Runs to the child's end. A file that can't be opened is a std::system_error
// as of any other file. The probe is asked for the opening of both.
ChildEnd runChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                  const std::filesystem::path& input, const ChildLimits& limits,
                  const std::function<void(std::string_view)>& result);

// The file name of a program on this system: "NAME", "NAME.exe".
std::string programFileName(const std::string& name);

}
