#include "platform/system/linux/process_folder.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <map>

namespace tolvek::test {

namespace fs = std::filesystem;
using namespace std::string_literals;

// A process folder in the system's format, filled by each test.
class ProcessFolderTest : public testing::Test {
protected:
    ProcessFolderTest()
    {
        fs::create_directories(home() / ".wine" / "dosdevices");
        fs::create_directories(home() / ".wine" / "drive_c" / "PostPet");
        fs::create_directory_symlink("../drive_c", home() / ".wine" / "dosdevices" / "c:");
        writeBytes(emulated(), "MZ");
        fs::create_directory(processes());
        writeBytes(processes() / "version", "no process");
        fs::create_directory(processes() / "self");
    }
    fs::path home() const { return folder / "home"; }
    fs::path processes() const { return folder / "proc"; }
    fs::path emulated() const { return home() / ".wine/drive_c/PostPet/PostPet20.exe"; }

    void givenProcess(int id, const std::string& exe, const std::string& line,
                      const std::string& variables = {}) const
    {
        const fs::path process = processes() / std::to_string(id);
        fs::create_directory(process);
        if (!exe.empty()) fs::create_symlink(exe, process / "exe");
        fs::create_symlink(home(), process / "cwd");
        writeBytes(process / "cmdline", line);
        writeBytes(process / "environ", "A=B\0"s + variables + '\0');
    }
    void givenEmulated(int id, const std::string& exe, const std::string& line) const
    {
        givenProcess(id, exe, line, "HOME=" + home().string());
    }
    void givenParent(int id, const std::string& name, int parent) const
    {
        const fs::path process = processes() / std::to_string(id);
        fs::create_directory(process);
        writeBytes(process / "stat",
                   std::to_string(id) + " (" + name + ") S " + std::to_string(parent) + " 1 1 0");
    }
    std::map<int, std::string> running() const
    {
        std::map<int, std::string> found;
        for (const RunningProgram& program : runningProgramsIn(processes()))
            found[program.processId] = program.program.string();
        return found;
    }

    TempFolder folder;
};

using Found = std::map<int, std::string>;

TEST_F(ProcessFolderTest, AProgramIsKnownByItsFile)
{
    givenProcess(7, "/usr/bin/editor", "editor\0PostPet20.exe\0"s);
    givenProcess(12, "/opt/PostPet20.exe", "sh\0"s);
    EXPECT_EQ(running(), (Found{{7, "/usr/bin/editor"}, {12, "/opt/PostPet20.exe"}}));
}

TEST_F(ProcessFolderTest, OneWithoutAReadablePathIsntListed)
{
    givenProcess(2, "", "");
    EXPECT_EQ(running(), Found{});
}

TEST_F(ProcessFolderTest, AReplacedFileStillNamesItsProgram)
{
    givenProcess(3, "/opt/PostPet20.exe (deleted)", "");
    writeBytes(folder / "x (deleted)", "a file of that name");
    givenProcess(4, (folder / "x (deleted)").string(), "");
    EXPECT_EQ(running(),
              (Found{{3, "/opt/PostPet20.exe"}, {4, (folder / "x (deleted)").string()}}));
}

TEST_F(ProcessFolderTest, AnEmulatedProgramIsKnownByItsCommandLine)
{
    const std::string path = "C:\\postpet\\POSTPET20.EXE\0"s;
    givenEmulated(5, "/usr/lib/wine/wine64-preloader", path);
    givenEmulated(6, "/usr/lib/wine/wine", "/usr/lib/wine/wine\0"s + path + "-x\0"s);
    givenEmulated(7, "/usr/lib/wine/wine64", "wine64\0"s + emulated().string() + '\0');
    givenEmulated(8, "/usr/bin/wine-preloader", "wine\0.wine/drive_c/PostPet/PostPet20.exe\0"s);
    givenEmulated(9, "/opt/otherloader", path);
    const std::string found = emulated().string();
    EXPECT_EQ(running(), (Found{{5, found}, {6, found}, {7, found}, {8, found}, {9, found}}));
}

TEST_F(ProcessFolderTest, TheEnvironmentMayStandInAFolderOfItsOwn)
{
    givenProcess(5, "/usr/bin/wine", "C:\\PostPet\\PostPet20.exe\0"s,
                 "HOME=/nowhere\0WINEPREFIX="s + (home() / ".wine").string());
    EXPECT_EQ(running(), (Found{{5, emulated().string()}}));
}

TEST_F(ProcessFolderTest, AnEmulatedProgramWithoutAPathIsntListed)
{
    givenEmulated(5, "/usr/bin/wine", "");
    givenEmulated(6, "/usr/bin/wine", "wine\0"s);
    givenEmulated(7, "/usr/bin/wine", "Q:\\gone.exe\0"s);
    EXPECT_EQ(running(), Found{});
}

TEST_F(ProcessFolderTest, AFamilyHasAllThatItsFirstHasStarted)
{
    givenParent(10, "PostPet", 1);
    givenParent(11, "a) S 99 (b", 10);
    givenParent(12, "x", 11);
    givenParent(13, "stranger", 1);
    EXPECT_EQ(processFamily(10, processes()), (std::vector{10, 11, 12}));
    EXPECT_EQ(processFamily(99, processes()), (std::vector{99}));
}

TEST_F(ProcessFolderTest, AMissingFolderIsToldByItsCode)
{
    EXPECT_THROW(runningProgramsIn(folder / "gone"), std::system_error);
}

}
