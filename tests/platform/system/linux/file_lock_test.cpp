#include "platform/system/file_lock.h"

#include "platform/system/files.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

class FileLockTest : public testing::Test {
protected:
    bool isHeldElsewhere() const { return FileLock(path).isHeldElsewhere(); }
    mode_t mode() const
    {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 0777;
    }
    TempFolder folder;
    const fs::path path = folder / "Tolvek.lock";
};

TEST_F(FileLockTest, TwoLocksOnOneFileExcludeEachOther)
{
    const FileLock first(path);
    EXPECT_TRUE(first.isHeld());
    EXPECT_FALSE(first.isHeldElsewhere());
    const FileLock second(path);
    EXPECT_FALSE(second.isHeld());
    EXPECT_TRUE(second.isHeldElsewhere());
    EXPECT_TRUE(FileLock(folder / "Another.lock").isHeld());
}

TEST_F(FileLockTest, WhatIsLeftOverIsNoLock)
{
    FileLock{path};
    ASSERT_TRUE(fileExists(path));
    EXPECT_TRUE(FileLock(path).isHeld());
    writeBytes(path, "somebody's text");
    EXPECT_TRUE(FileLock(path).isHeld());
    EXPECT_EQ(readBytes(path), "somebody's text");
}

// Unlike locks that belong to the whole process.
TEST_F(FileLockTest, ReadingTheFileInTheSameProcessLeavesTheLock)
{
    const FileLock lock(path);
    readFile(path);
    ChildProcess other([&] { return isHeldElsewhere() ? 1 : 0; });
    EXPECT_EQ(other.exitCode(), 1);
}

// Network file systems turn such a lock into one of the common kind.
TEST_F(FileLockTest, TheCommonKindOfLockIsSeen)
{
    Signal ready;
    ChildProcess other([&] {
        const int file = open(path.c_str(), O_RDWR | O_CREAT, 0600);
        struct flock whole {};
        whole.l_type = F_WRLCK;
        ready.send(fcntl(file, F_SETLK, &whole) == 0 ? 'l' : '?');
        return Signal().wait();
    });
    ASSERT_EQ(ready.wait(), 'l');
    EXPECT_TRUE(isHeldElsewhere());
}

TEST_F(FileLockTest, AProgramThatIsStartedDoesntInheritTheLock)
{
    Signal ready;
    FileLock lock(path);
    ChildProcess started([&] {
        ready.sendFromOutput();
        return execl("/bin/sh", "sh", "-c", "echo; exec sleep 60", nullptr);
    });
    ready.wait();
    lock = FileLock();
    EXPECT_FALSE(isHeldElsewhere());
}

TEST_F(FileLockTest, ALockCanBeHandedOn)
{
    FileLock first(path);
    FileLock second(std::move(first));
    EXPECT_TRUE(second.isHeld());
    EXPECT_TRUE(isHeldElsewhere());
    second = FileLock();
    EXPECT_FALSE(isHeldElsewhere());
}

TEST_F(FileLockTest, WhereNoneCanBeHadNobodyHoldsIt)
{
    for (const fs::path& nowhere : {folder / "none" / "Tolvek.lock", folder.path()}) {
        const FileLock lock(nowhere);
        EXPECT_FALSE(lock.isHeld());
        EXPECT_FALSE(lock.isHeldElsewhere());
    }
}

TEST_F(FileLockTest, AFileIsMadeOnlyIfAsked)
{
    EXPECT_FALSE(FileLock(path, FileLock::Missing::Leave).isHeld());
    EXPECT_FALSE(fileExists(path));
    FileLock{path};
    EXPECT_TRUE(FileLock(path, FileLock::Missing::Leave).isHeld());
}

TEST_F(FileLockTest, ALinkIsNotFollowed)
{
    fs::create_symlink("elsewhere", path);
    EXPECT_FALSE(FileLock(path).isHeld());
    EXPECT_FALSE(fileExists(folder / "elsewhere"));
}

TEST_F(FileLockTest, WhoeverMayWriteInTheFolderMayLock)
{
    const mode_t mask = umask(0077);
    for (const auto& [ofFolder, ofFile] :
         {std::pair{0700, 0600}, {0755, 0600}, {0770, 0660}, {0777, 0666}, {0700, 0600}}) {
        ASSERT_EQ(chmod(folder.path().c_str(), ofFolder), 0);
        FileLock{path};
        EXPECT_EQ(mode(), ofFile) << std::oct << ofFolder;
    }
    umask(mask);
}

}
}
