#include "platform/system/registry.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {

namespace fs = std::filesystem;

constexpr char kMsInfo[] = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";

class RegistryLinuxTest : public testing::Test {
protected:
    RegistryLinuxTest() : startFolder(fs::current_path()), startPath(std::getenv("PATH"))
    {
        setenv("PATH", folder.path().c_str(), 1);
    }
    ~RegistryLinuxTest() override
    {
        fs::current_path(startFolder);
        setenv("PATH", startPath.c_str(), 1);
    }
    void install(const std::string& name) const
    {
        writeBytes(folder / name, "#!/bin/sh\n");
        fs::permissions(folder / name, fs::perms(0755));
    }
    // The value as a program reads it, without the NUL.
    static std::string pathOfTool()
    {
        RegistryKey key = 0;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kMsInfo, 0x2003F, key) != kRegistryFound) return "-";
        std::uint32_t type = 0;
        std::string buffer(1024, '\0');
        EXPECT_EQ(RegQueryValueExA(key, "PATH", type, buffer), kRegistryFound);
        EXPECT_EQ(type, kRegistryString);
        EXPECT_EQ(buffer.back(), '\0');
        EXPECT_EQ(RegCloseKey(key), kRegistryFound);
        return buffer.c_str();
    }

    TempFolder folder;
    fs::path startFolder;
    std::string startPath;
};

TEST_F(RegistryLinuxTest, WithoutAToolTheKeyIsntThere)
{
    install("another-program");
    EXPECT_EQ(pathOfTool(), "-");
    EXPECT_TRUE(systemRegistry().empty());
}

TEST_F(RegistryLinuxTest, AnInstalledToolIsToldByItsWholePath)
{
    install("kinfocenter");
    EXPECT_EQ(pathOfTool(), (folder / "kinfocenter").string());
}

TEST_F(RegistryLinuxTest, AnInformationToolComesBeforeAMonitor)
{
    install("gnome-system-monitor");
    EXPECT_EQ(pathOfTool(), (folder / "gnome-system-monitor").string());
    install("hardinfo");
    EXPECT_EQ(pathOfTool(), (folder / "hardinfo").string()) << "looked for at each call";
    fs::remove(folder / "hardinfo");
    EXPECT_EQ(pathOfTool(), (folder / "gnome-system-monitor").string());
}

TEST_F(RegistryLinuxTest, AFileThatCantBeRunIsNoTool)
{
    writeBytes(folder / "hardinfo", "text");
    EXPECT_EQ(pathOfTool(), "-");
}

TEST_F(RegistryLinuxTest, APlaceRelativeToTheCurrentFolderIsToldWholeToo)
{
    install("hardinfo");
    fs::current_path(folder.path());
    setenv("PATH", ".", 1);
    EXPECT_TRUE(fs::path(pathOfTool()).is_absolute());
    EXPECT_TRUE(fs::equivalent(pathOfTool(), folder / "hardinfo"));
}

}
