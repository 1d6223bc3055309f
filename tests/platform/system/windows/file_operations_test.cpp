#include "platform/system/file_stamp.h"
#include "platform/system/files.h"
#include "platform/system/mapped_file.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <system_error>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

class WindowsFilesTest : public testing::Test {
protected:
    static void markReadOnly(const fs::path& path) { fs::permissions(path, fs::perms::owner_read); }
    static std::error_code failureOf(const std::function<void()>& work)
    {
        try {
            work();
            return {};
        } catch (const std::system_error& error) {
            return error.code();
        }
    }

    TempFolder folder;
};

TEST_F(WindowsFilesTest, AMarkedFileIsRemovedAndReplacedAsOnOtherSystems)
{
    replaceContents(folder / "a", "old");
    markReadOnly(folder / "a");
    EXPECT_TRUE(isReadOnly(folder / "a"));
    writeBytes(folder / "b", "new");
    replaceFile(folder / "b", folder / "a");
    EXPECT_EQ(readFile(folder / "a"), "new");
    markReadOnly(folder / "a");
    removeFile(folder / "a");
    EXPECT_FALSE(fileExists(folder / "a"));
}

TEST_F(WindowsFilesTest, AMarkStaysWhenTheReplacementFails)
{
    writeBytes(folder / "a", "old");
    markReadOnly(folder / "a");
    EXPECT_EQ(failureOf([&] { replaceFile(folder / "none", folder / "a"); }),
              std::errc::no_such_file_or_directory);
    EXPECT_TRUE(isReadOnly(folder / "a"));
}

TEST_F(WindowsFilesTest, AMarkedFileIsFlushedAndStaysMarked)
{
    writeBytes(folder / "a", "text");
    markReadOnly(folder / "a");
    flushFileToDisk(folder / "a");
    EXPECT_TRUE(isReadOnly(folder / "a"));
}

TEST_F(WindowsFilesTest, AnOpenFileIsReadToItsEndAfterItsRemoval)
{
    writeBytes(folder / "a", "text");
    OpenFile open(folder / "a", OpenFile::Mode::Read);
    removeFile(folder / "a");
    char bytes[4] = {};
    EXPECT_EQ(open.read(bytes, sizeof bytes), sizeof bytes);
    EXPECT_EQ(std::string(bytes, 4), "text");
}

TEST_F(WindowsFilesTest, ReadingAtAPlaceLeavesThePosition)
{
    writeBytes(folder / "a", "0123456789");
    OpenFile open(folder / "a", OpenFile::Mode::Read);
    char bytes[3] = {};
    EXPECT_EQ(open.read(bytes, 2), 2u);
    EXPECT_EQ(open.readAt(8, bytes, 3), 2u);
    EXPECT_EQ(open.read(bytes, 1), 1u);
    EXPECT_EQ(bytes[0], '2');
}

TEST_F(WindowsFilesTest, PathsMayBeLongAndNamesJapanese)
{
    fs::path deep = folder.path();
    for (int i = 0; i < 6; ++i)
        deep /= pathOf("とても長い名前のフォルダ" + std::string(40, 'a'));
    ASSERT_GT(deep.native().size(), 260u);
    fs::create_directories(deep);
    replaceContents(deep / pathOf("手紙.txt"), "本文");
    renameFile(deep / pathOf("手紙.txt"), deep / pathOf("写し.txt"));
    EXPECT_EQ(readFile(deep / pathOf("写し.txt")), "本文");
    EXPECT_EQ(fileNames(deep), std::vector<std::string>{"写し.txt"});
}

TEST_F(WindowsFilesTest, TheNameIsTheFoldersOwn)
{
    writeBytes(folder / "Tolvek.Mdb", "");
    EXPECT_EQ(nameOnDisk(folder / "TOLVEK.mdb"), "Tolvek.Mdb");
    EXPECT_EQ(nameOnDisk(folder / "none"), "none");
}

TEST_F(WindowsFilesTest, AStampTellsAReplacedFileOfTheSameSize)
{
    writeBytes(folder / "a", "one");
    const FileStamp before = fileStamp(folder / "a");
    EXPECT_EQ(fileStamp(folder / "a"), before);
    replaceContents(folder / "a", "two");
    EXPECT_NE(fileStamp(folder / "a"), before);
}

TEST_F(WindowsFilesTest, AFileInAFoldersPlaceIsToldFromAMissingFolder)
{
    writeBytes(folder / "file", "");
    EXPECT_EQ(failureOf([&] { readFile(folder / "file" / "x" / "y"); }),
              std::errc::not_a_directory);
    EXPECT_EQ(failureOf([&] { readFile(folder / "none" / "x"); }),
              std::errc::no_such_file_or_directory);
}

TEST_F(WindowsFilesTest, AMappedFileHasItsBytes)
{
    writeBytes(folder / "a", "bytes");
    writeBytes(folder / "empty", "");
    EXPECT_EQ(MappedFile(folder / "a").bytes(), "bytes");
    EXPECT_EQ(MappedFile(folder / "empty").bytes(), "");
}

}
}
