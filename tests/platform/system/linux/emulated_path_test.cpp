#include "platform/system/linux/emulated_path.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {

namespace fs = std::filesystem;

// An environment with a drive C of its own and a drive Z, which is the host's root.
class EmulatedPathTest : public testing::Test {
protected:
    EmulatedPathTest()
    {
        fs::create_directories(environment() / "dosdevices");
        fs::create_directories(drive() / "Program Files" / "PostPet");
        fs::create_directory_symlink("../drive_c", environment() / "dosdevices" / "c:");
        fs::create_directory_symlink("/", environment() / "dosdevices" / "z:");
        writeBytes(program(), "MZ");
    }
    fs::path environment() const { return folder / ".wine"; }
    fs::path drive() const { return environment() / "drive_c"; }
    fs::path program() const { return drive() / "Program Files" / "PostPet" / "PostPet20.exe"; }
    std::string host(const std::string& path) const
    {
        const auto found = hostPath(path, environment());
        return found ? found->string() : "none";
    }

    TempFolder folder;
};

TEST_F(EmulatedPathTest, ADriveIsALinkOfTheEnvironment)
{
    EXPECT_EQ(host("C:\\Program Files\\PostPet\\PostPet20.exe"), program());
    EXPECT_EQ(host("Z:\\usr\\bin\\env"), "/usr/bin/env");
    EXPECT_EQ(host("C:\\"), drive());
    EXPECT_EQ(host("D:\\x.exe"), "none");
}

TEST_F(EmulatedPathTest, TheCaseOfANameDoesntCount)
{
    EXPECT_EQ(host("c:\\PROGRAM FILES\\postpet\\POSTPET20.EXE"), program());
    fs::create_directory(drive() / "program files");
    EXPECT_EQ(host("c:\\program files\\x"), drive() / "program files" / "x")
        << "unless one is there as written";
}

TEST_F(EmulatedPathTest, WhatIsMissingStaysAsWritten)
{
    EXPECT_EQ(host("C:\\program files\\Gone\\Away.exe"),
              drive() / "Program Files" / "Gone" / "Away.exe");
}

TEST_F(EmulatedPathTest, OddPathsAreRead)
{
    for (const char* path : {"C:/Program Files/PostPet/PostPet20.exe",
                             "\\\\?\\C:\\Program Files\\PostPet\\PostPet20.exe",
                             "\\??\\C:\\Program Files\\PostPet\\PostPet20.exe",
                             "C:\\\\Program Files\\.\\PostPet\\\\PostPet20.exe",
                             "C:\\Program Files\\x\\..\\PostPet\\PostPet20.exe"})
        EXPECT_EQ(host(path), program()) << path;
}

TEST_F(EmulatedPathTest, ANameOfTheHostIsNone)
{
    for (const char* path :
         {"", "C", "C:", "C:x.exe", "/c:/x", "1:\\x", "\\\\server\\x", "x.exe"}) {
        EXPECT_FALSE(isDrivePath(path)) << path;
        EXPECT_EQ(host(path), "none") << path;
    }
}

}
