#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "platform/system/volumes.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace tolvek::test {

using Folders = std::vector<std::string>;

class VolumesTest : public testing::Test {
protected:
    VolumesTest() : home_(value("HOME")), environment_(value("WINEPREFIX"))
    {
        setenv("HOME", folder.path().c_str(), 1);
        unsetenv("WINEPREFIX");
    }
    ~VolumesTest() override
    {
        hooks::setVolumeFolders({});
        hooks::setFileProbe({});
        setenv("HOME", home_.c_str(), 1);
        environment_.empty() ? unsetenv("WINEPREFIX")
                             : setenv("WINEPREFIX", environment_.c_str(), 1);
    }
    static std::string value(const char* name)
    {
        const char* found = std::getenv(name);
        return found ? found : "";
    }
    static long countOf(const std::string& wanted)
    {
        const Folders folders = volumeFolders();
        return std::count(folders.begin(), folders.end(), wanted);
    }

    TempFolder folder;

private:
    std::string home_, environment_;
};

TEST_F(VolumesTest, TheRootComesFirstAndTheUsersHomeNext)
{
    const Folders folders = volumeFolders();
    ASSERT_GE(folders.size(), 2u);
    EXPECT_EQ(folders[0], "/");
    EXPECT_EQ(folders[1], folder.path());
}

TEST_F(VolumesTest, ASeparatorAtTheEndOfTheHomeIsDropped)
{
    setenv("HOME", (folder.path().string() + "//").c_str(), 1);
    EXPECT_EQ(volumeFolders()[1], folder.path());
}

TEST_F(VolumesTest, EachFolderExistsAndStandsOnce)
{
    setenv("HOME", "/", 1);
    for (const std::string& volume : volumeFolders()) {
        EXPECT_TRUE(folderExists(volume)) << volume;
        EXPECT_EQ(countOf(volume), 1) << volume;
    }
}

TEST_F(VolumesTest, AHomeThatIsMissingOrNoPathIsLeftOut)
{
    for (const char* home : {"", "home", "/no/such/home"}) {
        setenv("HOME", home, 1);
        EXPECT_EQ(countOf(home), 0) << home;
    }
    unsetenv("HOME");
    EXPECT_EQ(volumeFolders()[0], "/");
}

TEST_F(VolumesTest, TheDriveOfAWindowsEnvironmentIsOneOfThem)
{
    const std::string drive = folder / ".wine/drive_c";
    EXPECT_EQ(countOf(drive), 0);
    std::filesystem::create_directories(drive);
    EXPECT_EQ(countOf(drive), 1);
    const std::string other = folder / "other/drive_c";
    std::filesystem::create_directories(other);
    setenv("WINEPREFIX", (folder / "other").c_str(), 1);
    EXPECT_EQ(countOf(other), 1);
    EXPECT_EQ(countOf(drive), 0);
}

TEST_F(VolumesTest, WithoutATableOfMountsTheUsersOwnRemain)
{
    hooks::setFileProbe([](FileOperation, const std::filesystem::path&) {
        throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
    });
    EXPECT_EQ(volumeFolders(), (Folders{"/", folder.path()}));
}

TEST_F(VolumesTest, ATestPutsItsOwnInTheirPlace)
{
    hooks::setVolumeFolders({"/a", "/b"});
    EXPECT_EQ(volumeFolders(), (Folders{"/a", "/b"}));
    hooks::setVolumeFolders({});
    EXPECT_EQ(volumeFolders()[0], "/");
}

}
