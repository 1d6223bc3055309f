#include "platform/system/registry.h"
#include "platform/system/test_hooks.h"

#include <gtest/gtest.h>

namespace tolvek::test {

constexpr std::uint32_t kOtherRoot = 0x80000001;
constexpr std::uint32_t kAllAccess = 0x2003F;

class RegistryTest : public testing::Test {
protected:
    void SetUp() override { hooks::clearRegistry(); }
    void TearDown() override { hooks::resetRegistry(); }

    static void given(const std::string& key, const std::string& name, const std::string& text)
    {
        hooks::setRegistryValue(HKEY_LOCAL_MACHINE, key, name, kRegistryString, text + '\0');
    }
    // The text of a value, or "-" with the step that failed to find it.
    static std::string text(const std::string& keyName, const std::string& valueName,
                            std::uint32_t root = HKEY_LOCAL_MACHINE)
    {
        RegistryKey key = 0;
        if (RegOpenKeyExA(root, keyName, kAllAccess, key) != kRegistryFound) return "-key";
        std::uint32_t type = 0;
        std::string buffer(100, '\0');
        const auto result = RegQueryValueExA(key, valueName, type, buffer);
        EXPECT_EQ(RegCloseKey(key), kRegistryFound);
        return result == kRegistryFound ? buffer.c_str() : "-value";
    }
};

TEST_F(RegistryTest, AClearedOneHasNothing)
{
    EXPECT_EQ(text("SOFTWARE", "PATH"), "-key");
}

TEST_F(RegistryTest, GivesAValueWithItsTypeAndItsLength)
{
    given("SOFTWARE\\Maker\\Tool", "PATH", "/bin/tool");
    hooks::setRegistryValue(HKEY_LOCAL_MACHINE, "SOFTWARE\\Maker\\Tool", "Count", kRegistryNumber,
                            std::string("\1\0\0\0", 4));
    RegistryKey key = 0;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Maker\\Tool", kAllAccess, key),
              kRegistryFound);
    std::uint32_t type = 0;
    std::string buffer(1024, 'x');
    EXPECT_EQ(RegQueryValueExA(key, "PATH", type, buffer), kRegistryFound);
    EXPECT_EQ(type, kRegistryString);
    EXPECT_EQ(buffer, std::string("/bin/tool\0", 10));
    EXPECT_EQ(RegQueryValueExA(key, "Count", type, buffer), kRegistryFound);
    EXPECT_EQ(type, kRegistryNumber);
    EXPECT_EQ(buffer, std::string("\1\0\0\0", 4));
    EXPECT_EQ(RegCloseKey(key), kRegistryFound);
}

TEST_F(RegistryTest, TheCaseOfNamesDoesntCount)
{
    given("SOFTWARE\\Maker", "Path", "here");
    EXPECT_EQ(text("software\\MAKER", "PATH"), "here");
}

TEST_F(RegistryTest, RootKeyAndNameAllCount)
{
    given("SOFTWARE\\Maker", "PATH", "here");
    EXPECT_EQ(text("SOFTWARE\\Maker", "PATH", kOtherRoot), "-key");
    EXPECT_EQ(text("SOFTWARE\\Mak", "PATH"), "-key");
    EXPECT_EQ(text("SOFTWARE\\Maker", "PAT"), "-value");
}

TEST_F(RegistryTest, AKeyAboveOneWithValuesIsThereToo)
{
    given("SOFTWARE\\Maker\\Tool", "PATH", "here");
    EXPECT_EQ(text("SOFTWARE\\Maker", "PATH"), "-value");
}

TEST_F(RegistryTest, ALaterValueOfTheSameNameTakesThePlace)
{
    given("SOFTWARE\\Maker", "PATH", "before");
    given("SOFTWARE\\MAKER", "Path", "after");
    EXPECT_EQ(text("SOFTWARE\\Maker", "PATH"), "after");
}

TEST_F(RegistryTest, AValueThatDoesntFitLeavesTheBufferAlone)
{
    given("SOFTWARE", "PATH", "123456789");
    RegistryKey key = 0;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", kAllAccess, key), kRegistryFound);
    std::uint32_t type = 77;
    std::string buffer(9, 'x');
    EXPECT_NE(RegQueryValueExA(key, "PATH", type, buffer), kRegistryFound);
    EXPECT_EQ(buffer, "xxxxxxxxx");
    EXPECT_EQ(type, 77u);
    buffer += 'x';
    EXPECT_EQ(RegQueryValueExA(key, "PATH", type, buffer), kRegistryFound);
    EXPECT_EQ(RegCloseKey(key), kRegistryFound);
}

TEST_F(RegistryTest, AClosedKeyAnswersNoMore)
{
    given("SOFTWARE", "PATH", "here");
    RegistryKey key = 0;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", kAllAccess, key), kRegistryFound);
    EXPECT_EQ(RegCloseKey(key), kRegistryFound);
    std::uint32_t type = 0;
    std::string buffer(100, '\0');
    EXPECT_NE(RegQueryValueExA(key, "PATH", type, buffer), kRegistryFound);
    EXPECT_NE(RegCloseKey(key), kRegistryFound);
}

TEST_F(RegistryTest, SettingAValueHidesWhatTheSystemHas)
{
    hooks::resetRegistry();
    given("SOFTWARE\\Maker", "PATH", "here");
    EXPECT_EQ(text("SOFTWARE\\Maker", "PATH"), "here");
    EXPECT_EQ(text("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH"), "-key");
}

}
