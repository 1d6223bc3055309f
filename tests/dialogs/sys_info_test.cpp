#include "dialogs/sys_info.h"
#include "platform/system/test_hooks.h"

#include "platform/runtime/paths.h"
#include "platform/system/registry.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"

#include <sys/stat.h>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

const TextView kNoInformation = u"現時点ではｼｽﾃﾑ情報を使用できません";
constexpr char kToolKey[] = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr char kFolderKey[] = "SOFTWARE\\Microsoft\\Shared Tools Location";

void givenText(const std::string& key, const std::string& name, const std::string& text)
{
    hooks::setRegistryValue(HKEY_LOCAL_MACHINE, key, name, kRegistryString, text + '\0');
}

class RegistryOfTest : public ::testing::Test {
protected:
    void SetUp() override { hooks::clearRegistry(); }
    void TearDown() override { hooks::resetRegistry(); }
    MsgBoxScript boxes;
};

class SysInfoKeyValueTest : public RegistryOfTest {
protected:
    bool get(const Text& keyName = u"SOFTWARE\\Maker", const Text& valueName = u"PATH")
    {
        return GetKeyValue(HKEY_LOCAL_MACHINE, keyName, valueName, result);
    }
    static void given(std::uint32_t type, const std::string& bytes)
    {
        hooks::setRegistryValue(HKEY_LOCAL_MACHINE, "SOFTWARE\\Maker", "PATH", type, bytes);
    }
    Text result = u"before";
};

TEST_F(SysInfoKeyValueTest, AMissingKeyGivesFalseAndAnEmptyResult)
{
    EXPECT_FALSE(get());
    EXPECT_EQ(result, u"");
}

TEST_F(SysInfoKeyValueTest, AMissingValueGivesFalseAndAnEmptyResult)
{
    givenText("SOFTWARE\\Maker", "OTHER", "x");
    EXPECT_FALSE(get());
    EXPECT_EQ(result, u"");
}

TEST_F(SysInfoKeyValueTest, AnotherRootIsAnotherPlace)
{
    givenText("SOFTWARE\\Maker", "PATH", "x");
    EXPECT_FALSE(GetKeyValue(0x80000001, u"SOFTWARE\\Maker", u"PATH", result));
    EXPECT_EQ(result, u"");
}

TEST_F(SysInfoKeyValueTest, ATextComesAsItIs)
{
    givenText("SOFTWARE\\Maker", "PATH", " C:\\道具\\a.exe ");
    EXPECT_TRUE(get());
    EXPECT_EQ(result, u" C:\\道具\\a.exe ");
}

TEST_F(SysInfoKeyValueTest, ATextEndsAtItsFirstNul)
{
    given(kRegistryString, std::string("ab\0cd\0", 6));
    EXPECT_TRUE(get());
    EXPECT_EQ(result, u"ab");
    given(kRegistryString, "without");
    EXPECT_TRUE(get());
    EXPECT_EQ(result, u"without");
}

TEST_F(SysInfoKeyValueTest, AnEmptyTextIsFoundAllTheSame)
{
    given(kRegistryString, std::string(1, '\0'));
    EXPECT_TRUE(get());
    EXPECT_EQ(result, u"");
}

TEST_F(SysInfoKeyValueTest, TheBufferHolds1024Bytes)
{
    givenText("SOFTWARE\\Maker", "PATH", std::string(1023, 'x'));
    EXPECT_TRUE(get());
    EXPECT_EQ(result, Text(1023, u'x'));
    givenText("SOFTWARE\\Maker", "PATH", std::string(1024, 'x'));
    EXPECT_FALSE(get());
    EXPECT_EQ(result, u"");
}

// Bytes from last to first, each without leading zeros, after the cut at the first NUL.
TEST_F(SysInfoKeyValueTest, ANumberIsBuiltFromItsBytes)
{
    const struct {
        std::string bytes;
        Text text;
    } rows[] = {
        {std::string("\x1a\0\0\0", 4), u"26"},
        {std::string("\x09\0\0\0", 4), u"9"},
        {std::string("\x34\x12\0\0", 4), u"4660"},      // 1234h
        {std::string("\x02\x10\0\0", 4), u"258"},       // 1002h reads as 102h
        {std::string("\x01\x02\x03\x04", 4), u"17185"}, // 4321h
        {std::string("\x78\x56\x34\x12", 4), u"305419896"},
        {std::string("\xff\xff\xff\xff", 4), u"4294967295"},
        {std::string("\0\0\0\0", 4), u""},
        {std::string("\0\x01\0\0", 4), u""}, // 256 begins with a NUL
        {std::string("\x20\0\0\0", 4), u""}, // 32 is a blank
        {std::string("\x20\x20\x20\x20", 4), u""},
        {std::string("\x20\x21\0\0", 4), u"8480"}, // 2120h
    };
    for (const auto& row : rows) {
        result = u"before";
        given(kRegistryNumber, row.bytes);
        EXPECT_TRUE(get());
        EXPECT_EQ(toUtf8(result), toUtf8(row.text));
    }
}

TEST_F(SysInfoKeyValueTest, AValueOfAnotherKindIsFoundAndNotTaken)
{
    given(3, "abc");
    EXPECT_TRUE(get());
    EXPECT_EQ(result, u"before");
}

TEST_F(SysInfoKeyValueTest, NoKeyStaysOpen)
{
    RegistryKey before = 0, after = 0;
    givenText("SOFTWARE\\Maker", "OTHER", "x");
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", 0x2003F, before), kRegistryFound);
    EXPECT_FALSE(get());
    EXPECT_TRUE(get(u"SOFTWARE\\Maker", u"OTHER"));
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE", 0x2003F, after), kRegistryFound);
    for (RegistryKey key = before + 1; key < after; ++key)
        EXPECT_NE(RegCloseKey(key), kRegistryFound) << key;
    EXPECT_EQ(RegCloseKey(before), kRegistryFound);
    EXPECT_EQ(RegCloseKey(after), kRegistryFound);
}

// The tools are scripts that write their names to a pipe; reading it waits for the one
// that was started.
class SysInfoStartTest : public RegistryOfTest {
protected:
    SysInfoStartTest() { EXPECT_EQ(mkfifo((folder / "words").c_str(), 0600), 0); }

    fs::path install(const std::string& name) const
    {
        fs::path path = folder / name;
        writeBytes(path,
                   "#!/bin/sh\nprintf '" + name + "' >'" + (folder / "words").string() + "'\n");
        fs::permissions(path, fs::perms(0755));
        return path;
    }
    std::string started() const { return readBytes(folder / "words"); }
    void givenTool(const fs::path& path) { givenText(kToolKey, "PATH", path.string()); }
    void givenFolder(const fs::path& path) { givenText(kFolderKey, "MSINFO", path.string()); }

    TempFolder folder;
};

TEST_F(SysInfoStartTest, WithoutBothKeysItSaysSo)
{
    boxes.expect(kNoInformation, MsgAnswer::Ok, u"Tolvek");
    StartSysInfo();
}

TEST_F(SysInfoStartTest, StartsTheToolOfTheFirstKey)
{
    givenTool(install("tool"));
    givenFolder(folder.path());
    install("MSINFO32.EXE");
    StartSysInfo();
    EXPECT_EQ(started(), "tool");
}

TEST_F(SysInfoStartTest, WithoutTheFirstKeyTheToolStandsInTheFolderOfTheSecond)
{
    givenFolder(folder.path());
    install("MSINFO32.EXE");
    StartSysInfo();
    EXPECT_EQ(started(), "MSINFO32.EXE");
}

TEST_F(SysInfoStartTest, AKeyWithoutItsValueIsNone)
{
    givenText(kToolKey, "VERSION", "5");
    givenFolder(folder.path());
    install("MSINFO32.EXE");
    StartSysInfo();
    EXPECT_EQ(started(), "MSINFO32.EXE");
}

TEST_F(SysInfoStartTest, AToolThatIsGoneFromTheSecondKeysFolderIsNone)
{
    givenFolder(folder.path());
    boxes.expect(kNoInformation);
    StartSysInfo();
    fs::create_directory(folder / "MSINFO32.EXE");
    boxes.expect(kNoInformation);
    StartSysInfo();
}

TEST_F(SysInfoStartTest, AFailedStartEndsTheSearch)
{
    givenFolder(folder.path());
    install("MSINFO32.EXE");
    writeBytes(folder / "text", "no program");
    for (const char* useless : {"gone", "text"}) {
        givenTool(folder / useless);
        boxes.expect(kNoInformation);
        StartSysInfo();
    }
}

TEST_F(SysInfoStartTest, AToolInTheSecondKeysFolderThatCantBeRunIsToldToo)
{
    givenFolder(folder.path());
    writeBytes(folder / "MSINFO32.EXE", "no program");
    boxes.expect(kNoInformation);
    StartSysInfo();
}

TEST_F(SysInfoStartTest, AnEmptyPathIsAFailureToo)
{
    givenText(kToolKey, "PATH", "");
    boxes.expect(kNoInformation);
    StartSysInfo();
}

}
}
