#include "platform/system/files.h"
#include "platform/system/linux/rename_fallback.h"
#include "support/probe_log.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tolvek::test {

namespace fs = std::filesystem;

TEST(FileOperationsReadOnlyTest, TheModeDecidesEvenForTheSuperuser)
{
    struct Case {
        unsigned mode;
        bool readOnly;
    };
    TempFolder folder;
    writeBytes(folder / "a", "");
    for (const auto& [mode, readOnly] :
         {Case{0644, false}, {0600, false}, {0444, true}, {0400, true}, {0466, true}}) {
        fs::permissions(folder / "a", fs::perms(mode));
        EXPECT_EQ(isReadOnly(folder / "a"), readOnly) << std::oct << mode;
    }
}

TEST(FileOperationsReadOnlyTest, WhatIsntThereIsNotReadOnly)
{
    TempFolder folder;
    EXPECT_FALSE(isReadOnly(folder / "none"));
}

TEST(FileOperationsOpenTest, ReadingTakesPlainFilesAloneAndNeverWaits)
{
    TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const fs::path& path : {folder / "pipe", fs::path("/dev/zero")})
        EXPECT_EQ(failureOf([&] { OpenFile(path, OpenFile::Mode::Read); }),
                  std::errc::invalid_argument)
            << path;
}

using Rename = void (*)(const fs::path&, const fs::path&);

class FileOperationsRenameTest : public testing::TestWithParam<Rename> {};

TEST_P(FileOperationsRenameTest, MovesToAFreeName)
{
    TempFolder folder;
    writeBytes(folder / "a", "1");
    GetParam()(folder / "a", folder / "b");
    EXPECT_FALSE(fileExists(folder / "a"));
    EXPECT_EQ(readBytes(folder / "b"), "1");
}

TEST_P(FileOperationsRenameTest, RefusesAPresentTarget)
{
    TempFolder folder;
    writeBytes(folder / "a", "1");
    writeBytes(folder / "b", "2");
    EXPECT_EQ(failureOf([&] { GetParam()(folder / "a", folder / "b"); }), std::errc::file_exists);
    EXPECT_EQ(readBytes(folder / "a"), "1");
    EXPECT_EQ(readBytes(folder / "b"), "2");
}

TEST_P(FileOperationsRenameTest, TellsOfAMissingSource)
{
    TempFolder folder;
    EXPECT_EQ(failureOf([&] { GetParam()(folder / "a", folder / "b"); }),
              std::errc::no_such_file_or_directory);
}

TEST_P(FileOperationsRenameTest, MovesAFolderToo)
{
    TempFolder folder;
    fs::create_directory(folder / "a");
    GetParam()(folder / "a", folder / "b");
    EXPECT_TRUE(folderExists(folder / "b"));
}

INSTANTIATE_TEST_SUITE_P(Ways, FileOperationsRenameTest,
                         testing::Values(&renameFile, &renameByLink, &renameAfterLooking));

}
