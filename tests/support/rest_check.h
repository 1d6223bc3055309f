// Whether an archive is at rest at this moment, as a box must find it: no log beside
// it, nothing of it that isn't in the file, and free for every other
// program. Make it before anything is opened.
#pragma once
#include "platform/system/files.h"
#include "support/other_program.h"
#include "support/temp_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace tolvek::test {

class RestCheck {
public:
    explicit RestCheck(std::filesystem::path archive)
        : archive_(std::move(archive)), others_([this] { return isLocked() ? 1 : 0; })
    {
    }

    void look(const std::string& where)
    {
        for (const char* log : {"-wal", "-journal"})
            EXPECT_FALSE(holdsBytes(archive_.string() + log)) << log << where;
        if (!fileExists(archive_)) return;
        constexpr int kWithoutLog = 1;
        EXPECT_EQ(readBytes(archive_).at(18), kWithoutLog) << where;
        EXPECT_EQ(others_.run(), 0) << "locked: " << where;
    }

private:
    // One that couldn't be removed is empty.
    static bool holdsBytes(const std::filesystem::path& log)
    {
        return fileExists(log) && std::filesystem::file_size(log) > 0;
    }
    // The bytes on which the engine's locks lie, as another program sees them.
    bool isLocked() const
    {
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_start = 0x40000000;
        lock.l_len = 512;
        const int descriptor = open(archive_.c_str(), O_RDWR);
        const bool answered = fcntl(descriptor, F_GETLK, &lock) == 0;
        close(descriptor);
        return !answered || lock.l_type != F_UNLCK;
    }

    std::filesystem::path archive_;
    OtherProgram others_;
};

}
