#include "platform/system/child_program.h"
#include "platform/system/file_lock.h"
#include "platform/system/files.h"
#include "platform/system/private_folder.h"
#include "platform/system/process.h"
#include "platform/system/process_list.h"
#include "platform/system/registry.h"
#include "platform/system/volumes.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

class WindowsProcessTest : public testing::Test {
protected:
    static fs::path systemProgram(const char* name) { return windowsFolder() / "system32" / name; }
    ChildEnd run(const std::vector<std::string>& arguments, const ChildLimits& limits = {})
    {
        writeBytes(folder / "input", "");
        return runChild(systemProgram("cmd.exe"), arguments, folder / "input", limits,
                        [](std::string_view) {});
    }

    TempFolder folder;
};

TEST_F(WindowsProcessTest, ALockExcludesAnotherAndLeavesTheFileReadable)
{
    const fs::path file = folder / "mark";
    writeBytes(file, "text");
    FileLock first(file);
    EXPECT_TRUE(first.isHeld());
    EXPECT_TRUE(FileLock(file).isHeldElsewhere());
    EXPECT_EQ(readFile(file), "text");
    first = FileLock();
    EXPECT_TRUE(FileLock(file).isHeld());
    EXPECT_FALSE(FileLock(folder / "none", FileLock::Missing::Leave).isHeld());
}

TEST_F(WindowsProcessTest, ASecondInstanceIsNoticed)
{
    const std::string name = "Tolvek test " + folder.path().filename().string();
    {
        const SingleInstance first(name, folder.path());
        EXPECT_TRUE(first.isFirst());
        EXPECT_FALSE(SingleInstance(name, folder.path()).isFirst());
        fs::create_directory(folder / "elsewhere");
        EXPECT_FALSE(SingleInstance(name, folder / "elsewhere").isFirst()) << "of this user";
    }
    EXPECT_TRUE(SingleInstance(name, folder.path()).isFirst());
}

TEST_F(WindowsProcessTest, AChildsExitCodeArrives)
{
    const ChildEnd end = run({"/c", "exit 7"});
    EXPECT_EQ(end.how, ChildEnd::How::Exited);
    EXPECT_EQ(end.code, 7);
}

TEST_F(WindowsProcessTest, AChildThatNeverEndsIsStopped)
{
    ChildLimits limits;
    limits.patience = std::chrono::milliseconds(200);
    EXPECT_EQ(run({"/c", "for /l %i in (0) do @rem"}, limits).how, ChildEnd::How::OutOfTime);
}

TEST_F(WindowsProcessTest, AChildBeyondItsProcessorTimeIsStopped)
{
    ChildLimits limits;
    limits.processorSeconds = 1;
    EXPECT_EQ(run({"/c", "for /l %i in (0) do @rem"}, limits).how, ChildEnd::How::OutOfTime);
}

TEST_F(WindowsProcessTest, AMissingChildIsAStartError)
{
    writeBytes(folder / "input", "");
    EXPECT_THROW(runChild(folder / "none.exe", {}, folder / "input", {}, [](std::string_view) {}),
                 ChildStartError);
}

TEST_F(WindowsProcessTest, ALibrarysSymbolsAreFound)
{
    const SharedLibrary library(systemProgram("kernel32.dll"));
    EXPECT_NE(library.symbol("GetTickCount"), nullptr);
    EXPECT_THROW(library.symbol("NoSuchCall"), std::system_error);
    writeBytes(folder / "text.dll", "no library");
    EXPECT_THROW(SharedLibrary(folder / "text.dll"), std::system_error);
    EXPECT_EQ(SharedLibrary::fileName("Tolvek"), "Tolvek.dll");
}

TEST_F(WindowsProcessTest, TheListHoldsThisProgramByItsPath)
{
    const std::vector<RunningProgram> all = runningPrograms();
    const fs::path home = programFolder(nullptr);
    EXPECT_TRUE(std::ranges::any_of(
        all, [&](const RunningProgram& one) { return one.program.parent_path() == home; }));
}

TEST_F(WindowsProcessTest, ProgramsAreFoundOnTheSearchPath)
{
    EXPECT_TRUE(installedProgram("cmd"));
    EXPECT_FALSE(installedProgram("no such program"));
}

TEST_F(WindowsProcessTest, TheInformationToolIsKnownWhereItIs)
{
    const std::vector<RegistryValue> values = systemRegistry();
    const bool installed = fileExists(systemProgram("msinfo32.exe"));
    EXPECT_EQ(values.empty(), !installed);
}

TEST_F(WindowsProcessTest, DrivesAreTheirRoots)
{
    const std::vector<std::string> drives = volumeFolders();
    EXPECT_NE(std::ranges::find(drives, "C:\\"), drives.end());
}

TEST_F(WindowsProcessTest, APrivateFolderIsNewAndCanBeFilled)
{
    const fs::path made = makePrivateFolder();
    writeBytes(made / "file", "text");
    EXPECT_EQ(readBytes(made / "file"), "text");
    const fs::path second = makePrivateFolder();
    EXPECT_NE(second, made);
    fs::remove_all(made);
    fs::remove_all(second);
}

}
}
