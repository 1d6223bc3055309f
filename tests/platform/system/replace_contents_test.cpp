#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "support/child_process.h"
#include "support/probe_log.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {

namespace fs = std::filesystem;
using enum FileOperation;

class ReplaceContentsTest : public testing::Test {
protected:
    ReplaceContentsTest() : file(folder / "TOLVEK.ini") { writeBytes(file, kOld); }

    const std::string kOld = "the old contents";
    const std::string kNew = std::string(100'000, 'n');
    TempFolder folder;
    fs::path file;
};

TEST_F(ReplaceContentsTest, LeavesTheNewContentsAndNoSideFile)
{
    replaceContents(file, kNew);
    EXPECT_EQ(readBytes(file), kNew);
    EXPECT_EQ(entryNames(folder.path()).size(), 1U);
}

TEST_F(ReplaceContentsTest, MakesAMissingFile)
{
    replaceContents(folder / "new.ini", kNew);
    EXPECT_EQ(readBytes(folder / "new.ini"), kNew);
}

TEST_F(ReplaceContentsTest, KeepsTheModeOfTheOldFile)
{
    fs::permissions(file, fs::perms(0640));
    replaceContents(file, kNew);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
}

TEST_F(ReplaceContentsTest, WritesThroughALink)
{
    fs::create_directory(folder / "elsewhere");
    fs::rename(file, folder / "elsewhere" / "real.ini");
    fs::create_symlink("elsewhere/real.ini", file);
    replaceContents(file, kNew);
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(readBytes(folder / "elsewhere" / "real.ini"), kNew);
}

TEST_F(ReplaceContentsTest, AStepThatFailsLeavesTheOldFileAndNoSideFile)
{
    for (FileOperation step : {Create, Write, Flush, Replace}) {
        ProbeLog log(step, std::errc::no_space_on_device);
        EXPECT_EQ(failureOf([&] { replaceContents(file, kNew); }), std::errc::no_space_on_device)
            << nameOf(step);
        hooks::setFileProbe({});
        EXPECT_EQ(readBytes(file), kOld) << nameOf(step);
        EXPECT_EQ(entryNames(folder.path()).size(), 1U) << nameOf(step);
    }
}

TEST_F(ReplaceContentsTest, AFailedFlushOfTheFolderIsToldWithTheNewFileInPlace)
{
    ProbeLog log(FlushFolder);
    EXPECT_EQ(failureOf([&] { replaceContents(file, kNew); }), std::errc::io_error);
    EXPECT_EQ(readBytes(file), kNew);
}

TEST_F(ReplaceContentsTest, AProcessEndedAtAnyStepLeavesOneOfTheTwoWhole)
{
    for (FileOperation step : {Create, Write, Flush, Replace, FlushFolder}) {
        writeBytes(file, kOld);
        ChildProcess child([&] {
            hooks::setFileProbe([step](FileOperation operation, const fs::path&) {
                if (operation == step) leaveProcess(9);
            });
            replaceContents(file, kNew);
            return 0;
        });
        EXPECT_EQ(child.exitCode(), 9) << nameOf(step);
        EXPECT_EQ(readBytes(file), step == FlushFolder ? kNew : kOld) << nameOf(step);
    }
}

TEST_F(ReplaceContentsTest, TheRestOfAnEndedProcessIsNoHindrance)
{
    writeBytes(folder / "TOLVEK.ini.side", "half of some");
    replaceContents(file, kNew);
    EXPECT_EQ(readBytes(file), kNew);
    EXPECT_EQ(entryNames(folder.path()).size(), 1U);
}

}
