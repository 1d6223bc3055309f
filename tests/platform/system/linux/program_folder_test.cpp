#include "platform/system/process.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {

namespace fs = std::filesystem;

class ProgramFolderTest : public testing::Test {
protected:
    ProgramFolderTest() : startFolder(fs::current_path()), startPath(std::getenv("PATH"))
    {
        fs::create_directories(folder / "bin");
        fs::create_directories(folder / "home");
        program(folder / "bin" / "tolvek");
    }
    ~ProgramFolderTest() override
    {
        fs::current_path(startFolder);
        setenv("PATH", startPath.c_str(), 1);
    }
    static void program(const fs::path& path)
    {
        writeBytes(path, "#!/bin/sh\n");
        fs::permissions(path, fs::perms(0755));
    }
    static fs::path ownFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }

    TempFolder folder;
    fs::path startFolder;
    std::string startPath;
};

TEST_F(ProgramFolderTest, IsThatOfTheNameItWasStartedBy)
{
    EXPECT_EQ(programFolder((folder / "bin" / "tolvek").c_str()), folder / "bin");
    fs::current_path(folder.path());
    EXPECT_EQ(programFolder("bin/tolvek"), folder / "bin");
    EXPECT_EQ(programFolder("./bin/./tolvek"), folder / "bin");
    EXPECT_EQ(programFolder("home/../bin/tolvek"), folder / "bin");
}

TEST_F(ProgramFolderTest, ALinkToTheExecutableCountsAsTheExecutable)
{
    fs::create_symlink("../bin/tolvek", folder / "home" / "mail");
    EXPECT_EQ(programFolder((folder / "home" / "mail").c_str()), folder / "home");
}

TEST_F(ProgramFolderTest, ClimbingOutOfALinkedFolderEndsWhereTheSystemEnds)
{
    fs::create_directories(folder / "far" / "home");
    program(folder / "far" / "tolvek");
    fs::create_symlink(folder / "far" / "home", folder / "link");
    EXPECT_EQ(programFolder((folder / "link" / ".." / "tolvek").c_str()), folder / "far");
}

TEST_F(ProgramFolderTest, ABareNameIsLookedForInThePath)
{
    program(folder / "home" / "other");
    writeBytes(folder / "home" / "tolvek", "not to be run");
    fs::create_directory(folder / "dir");
    fs::create_directory(folder / "dir" / "tolvek");
    const std::string folders = (folder / "none").string() + ":" + (folder / "dir").string() + ":" +
                                (folder / "home").string() + ":";
    setenv("PATH", (folders + (folder / "bin").string()).c_str(), 1);
    EXPECT_EQ(programFolder("tolvek"), folder / "bin");
    EXPECT_EQ(programFolder("other"), folder / "home");
}

TEST_F(ProgramFolderTest, AnEmptyPlaceInThePathIsTheCurrentFolder)
{
    fs::current_path(folder / "bin");
    setenv("PATH", ("/nowhere::" + (folder / "home").string()).c_str(), 1);
    EXPECT_EQ(programFolder("tolvek"), folder / "bin");
}

TEST_F(ProgramFolderTest, WithoutAUsableNameTheSystemIsAsked)
{
    EXPECT_EQ(programFolder(nullptr), ownFolder());
    EXPECT_EQ(programFolder(""), ownFolder());
    EXPECT_EQ(programFolder("no such program"), ownFolder());
    EXPECT_EQ(programFolder((folder / "bin" / "gone").c_str()), ownFolder());
}

}
