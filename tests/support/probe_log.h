// Records the operations of the file layer in order, and makes one of them fail on
// demand.
#pragma once
#include "platform/system/files.h"
#include "platform/system/test_hooks.h"

#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace tolvek::test {

inline std::string nameOf(FileOperation operation)
{
    static const char* const names[] = {"Open",     "Create", "Read",       "Write", "Flush",
                                        "Truncate", "Rename", "Replace",    "Link",  "Remove",
                                        "Copy",     "List",   "FlushFolder"};
    return names[static_cast<int>(operation)];
}

class ProbeLog {
public:
    explicit ProbeLog(std::optional<FileOperation> failing = {},
                      std::errc code = std::errc::io_error)
    {
        hooks::setFileProbe(
            [this, failing, code](FileOperation operation, const std::filesystem::path& path) {
                asked.push_back(nameOf(operation) + " " + path.filename().string());
                if (operation == failing) throw std::system_error(std::make_error_code(code));
            });
    }
    ~ProbeLog() { hooks::setFileProbe({}); }
    ProbeLog(const ProbeLog&) = delete;
    ProbeLog& operator=(const ProbeLog&) = delete;

    std::vector<std::string> asked;
};

// The failure that the action ends with; an empty code for none.
template <class Action> std::error_code failureOf(Action action)
{
    try {
        action();
    } catch (const std::system_error& error) {
        return error.code();
    }
    return {};
}

}
