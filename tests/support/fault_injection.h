// Ends a process at each file operation of some work in turn, or makes each operation
// fail in turn.
#pragma once
#include "platform/system/files.h"
#include "platform/system/process.h"
#include "platform/system/test_hooks.h"
#include "support/child_process.h"

#include <gtest/gtest.h>

#include <functional>

namespace tolvek::test {

// The files of a folder as they were at keep(), to be restored after each end.
class KeptFolder {
public:
    explicit KeptFolder(std::filesystem::path folder)
        : folder_(std::move(folder)), kept_(folder_ / "kept")
    {
    }
    void keep()
    {
        std::filesystem::create_directory(kept_);
        copyAll(folder_, kept_);
    }
    void putBack()
    {
        for (const std::string& name : fileNames(folder_))
            std::filesystem::remove(folder_ / name);
        copyAll(kept_, folder_);
    }

private:
    static void copyAll(const std::filesystem::path& from, const std::filesystem::path& to)
    {
        for (const std::string& name : fileNames(from))
            std::filesystem::copy_file(from / name, to / name,
                                       std::filesystem::copy_options::overwrite_existing);
    }

    std::filesystem::path folder_, kept_;
};

inline constexpr int kCutOff = 42;
inline constexpr int kManyOperations = 5000; // more than any work in the tests has

// Selects the files whose operations count; if empty, all files.
using FaultFilter = std::function<bool(const std::filesystem::path&)>;

enum class Reads { Count, DontCount };

// For work whose checks are expensive: every operation, or every third one in a build
// with sanitizers, which takes ten times as long.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr int kSparse = 3;
#else
inline constexpr int kSparse = 1;
#endif

// Runs `fault` at the operation with that number, counted from 0. `always` is called
// first at every operation.
inline void faultAt(int number, std::function<void()> fault, FileProbe always = {},
                    FaultFilter counts = {}, Reads reads = Reads::Count)
{
    hooks::setFileProbe([number, fault, always, counts, reads, next = 0](
                            FileOperation operation, const std::filesystem::path& path) mutable {
        if (always) always(operation, path);
        if (counts && !counts(path)) return;
        if (reads == Reads::DontCount && operation == FileOperation::Read) return;
        if (next++ == number) fault();
    });
}

// True if the work ended without reaching that operation, at which the process was to
// end. Reads don't count: they leave the disk as it was.
inline bool gotThrough(int operation, const std::function<void()>& work, const FileProbe& always,
                       const FaultFilter& counts = {})
{
    ChildProcess child([&] {
        faultAt(
            operation, [] { leaveProcess(kCutOff); }, always, counts, Reads::DontCount);
        work();
        return 0;
    });
    const int code = child.exitCode();
    EXPECT_TRUE(code == 0 || code == kCutOff) << code;
    return code != kCutOff;
}

// `check` examines what each end has left and restores the initial state.
inline void endAtEachOperation(const std::function<void()>& work,
                               const std::function<void(int)>& check, const FileProbe& always = {},
                               const FaultFilter& counts = {}, int step = 1)
{
    int operation = 0;
    for (; operation < kManyOperations && !gotThrough(operation, work, always, counts);
         operation += step)
        check(operation);
    EXPECT_GT(operation, 5);
    EXPECT_LT(operation, kManyOperations);
}

inline void failEachOperation(const std::function<void()>& work,
                              const std::function<void(int)>& check, const FileProbe& always = {},
                              const FaultFilter& counts = {}, int step = 1)
{
    bool failed = true;
    int operation = 0;
    for (; failed && operation < kManyOperations; operation += step) {
        failed = false;
        const auto fail = [&failed] {
            failed = true;
            throw std::system_error(std::make_error_code(std::errc::io_error));
        };
        faultAt(operation, fail, always, counts);
        work();
        hooks::setFileProbe({});
        check(operation);
    }
    EXPECT_GT(operation, 10);
    EXPECT_LT(operation, kManyOperations);
}

}
