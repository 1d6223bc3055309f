#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "support/probe_log.h"
#include "support/temp_folder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace tolvek::test {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

class FilesTest : public testing::Test {
protected:
    void given(const std::string& name, const std::string& bytes)
    {
        writeBytes(folder / name, bytes);
    }
    std::string contents(const std::string& name) const { return readBytes(folder / name); }
    Names everything() const
    {
        Names names = entryNames(folder.path());
        std::sort(names.begin(), names.end());
        return names;
    }

    TempFolder folder;
};

TEST_F(FilesTest, ReadsAFileInPiecesUpToItsEnd)
{
    given("a", "abcdef");
    OpenFile file(folder / "a", OpenFile::Mode::Read);
    char buffer[4];
    EXPECT_EQ(file.read(buffer, 4), 4U);
    EXPECT_EQ(std::string(buffer, 4), "abcd");
    EXPECT_EQ(file.read(buffer, 4), 2U);
    EXPECT_EQ(file.read(buffer, 4), 0U);
}

TEST_F(FilesTest, CreateEmptiesAnExistingFile)
{
    given("a", "the old contents");
    OpenFile file(folder / "a", OpenFile::Mode::Create);
    file.write("new");
    file.flush();
    file.close();
    EXPECT_EQ(contents("a"), "new");
}

TEST_F(FilesTest, CreateNewRefusesAnExistingFile)
{
    given("a", "old");
    EXPECT_EQ(failureOf([&] { OpenFile(folder / "a", OpenFile::Mode::CreateNew); }),
              std::errc::file_exists);
    EXPECT_EQ(contents("a"), "old");
    OpenFile(folder / "b", OpenFile::Mode::CreateNew).write("b");
    EXPECT_EQ(contents("b"), "b");
}

TEST_F(FilesTest, AMovedFileGoesOnWhereItStood)
{
    OpenFile first(folder / "a", OpenFile::Mode::Create);
    first.write("1");
    OpenFile second(std::move(first));
    second.write("2");
    OpenFile third(folder / "b", OpenFile::Mode::Create);
    third = std::move(second);
    third.write("3");
    third.close();
    EXPECT_EQ(contents("a"), "123");
    EXPECT_EQ(contents("b"), "");
}

TEST_F(FilesTest, AClosedFileTakesNothingMore)
{
    OpenFile file(folder / "a", OpenFile::Mode::Create);
    file.close();
    file.close();
    char buffer[1];
    EXPECT_EQ(failureOf([&] { file.write("x"); }), std::errc::bad_file_descriptor);
    EXPECT_EQ(failureOf([&] { file.flush(); }), std::errc::bad_file_descriptor);
    EXPECT_EQ(failureOf([&] { file.read(buffer, 1); }), std::errc::bad_file_descriptor);
}

TEST_F(FilesTest, OpeningTellsMissingFileMissingFolderAndFolderApart)
{
    given("file", "");
    auto opening = [&](const fs::path& path) {
        return failureOf([&] { OpenFile(path, OpenFile::Mode::Read); });
    };
    EXPECT_EQ(opening(folder / "none"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(opening(folder / "file" / "x"), std::errc::not_a_directory);
    EXPECT_EQ(opening(folder.path()), std::errc::is_a_directory);
}

TEST_F(FilesTest, AFullDiskIsToldAtTheWrite)
{
    OpenFile file("/dev/full", OpenFile::Mode::Create);
    EXPECT_EQ(failureOf([&] { file.write("x"); }), std::errc::no_space_on_device);
}

TEST_F(FilesTest, FilesAndFoldersAreToldApart)
{
    given("file", "");
    fs::create_symlink(folder / "file", folder / "link");
    fs::create_symlink(folder / "nothing", folder / "dangling");
    EXPECT_TRUE(fileExists(folder / "file"));
    EXPECT_TRUE(fileExists(folder / "link"));
    EXPECT_FALSE(fileExists(folder / "dangling"));
    EXPECT_FALSE(fileExists(folder.path()));
    EXPECT_FALSE(fileExists(""));
    EXPECT_TRUE(folderExists(folder.path()));
    EXPECT_FALSE(folderExists(folder / "file"));
    EXPECT_FALSE(folderExists(folder / "none"));
    EXPECT_TRUE(entryExists(folder / "file"));
    EXPECT_TRUE(entryExists(folder.path()));
    EXPECT_FALSE(entryExists(folder / "dangling"));
}

TEST_F(FilesTest, ListsFilesAloneOrEverything)
{
    given("b.txt", "");
    given("受信.ppl", "");
    fs::create_directory(folder / "sub");
    fs::create_symlink(folder / "nothing", folder / "dangling");
    Names files = fileNames(folder.path());
    std::sort(files.begin(), files.end());
    EXPECT_EQ(files, (Names{"b.txt", "受信.ppl"}));
    EXPECT_EQ(everything(), (Names{"b.txt", "dangling", "sub", "受信.ppl"}));
    EXPECT_EQ(failureOf([&] { fileNames(folder / "none"); }), std::errc::no_such_file_or_directory);
}

TEST_F(FilesTest, ListsFoldersAloneWithTheLinksToThem)
{
    given("file", "");
    fs::create_directory(folder / "sub");
    fs::create_directory(folder / ".hidden");
    fs::create_directory_symlink(folder / "sub", folder / "link");
    fs::create_symlink(folder / "nothing", folder / "dangling");
    Names folders = folderNames(folder.path());
    std::sort(folders.begin(), folders.end());
    EXPECT_EQ(folders, (Names{".hidden", "link", "sub"}));
    EXPECT_EQ(failureOf([&] { folderNames(folder / "none"); }),
              std::errc::no_such_file_or_directory);
}

TEST_F(FilesTest, ReadFileGivesEveryByte)
{
    const std::string bytes = std::string(200'000, 'x') + std::string("\0\r\n\x1a", 4);
    given("a", bytes);
    EXPECT_EQ(readFile(folder / "a"), bytes);
}

TEST_F(FilesTest, RemovesAFileButNoFolder)
{
    given("a", "");
    removeFile(folder / "a");
    EXPECT_FALSE(fileExists(folder / "a"));
    EXPECT_EQ(failureOf([&] { removeFile(folder / "a"); }), std::errc::no_such_file_or_directory);
    fs::create_directory(folder / "empty");
    EXPECT_EQ(failureOf([&] { removeFile(folder / "empty"); }), std::errc::is_a_directory);
    EXPECT_TRUE(folderExists(folder / "empty"));
}

TEST_F(FilesTest, RenameMovesTheFileToAFreeName)
{
    given("a", "1");
    renameFile(folder / "a", folder / "b");
    EXPECT_EQ(everything(), (Names{"b"}));
    EXPECT_EQ(contents("b"), "1");
}

TEST_F(FilesTest, RenameRefusesAPresentTargetAndChangesNothing)
{
    given("a", "1");
    given("b", "2");
    EXPECT_EQ(failureOf([&] { renameFile(folder / "a", folder / "b"); }), std::errc::file_exists);
    EXPECT_EQ(contents("a"), "1");
    EXPECT_EQ(contents("b"), "2");
    EXPECT_EQ(failureOf([&] { renameFile(folder / "none", folder / "c"); }),
              std::errc::no_such_file_or_directory);
}

TEST_F(FilesTest, ReplaceTakesThePlaceOfAnotherFile)
{
    given("a", "1");
    given("b", "2");
    replaceFile(folder / "a", folder / "b");
    EXPECT_EQ(everything(), (Names{"b"}));
    EXPECT_EQ(contents("b"), "1");
}

TEST_F(FilesTest, ALinkIsASecondNameAndReplacesNothing)
{
    given("a", "1");
    linkFile(folder / "a", folder / "b");
    EXPECT_EQ(fs::hard_link_count(folder / "a"), 2U);
    EXPECT_EQ(failureOf([&] { linkFile(folder / "a", folder / "b"); }), std::errc::file_exists);
}

TEST_F(FilesTest, ACopyHasTheSameContents)
{
    given("a", std::string(100'000, 'y'));
    copyFileContents(folder / "a", folder / "b", true);
    EXPECT_EQ(contents("b"), contents("a"));
    EXPECT_EQ(everything(), (Names{"a", "b"}));
}

TEST_F(FilesTest, ACopyReplacesATargetOnlyWhenItMay)
{
    given("a", "new");
    given("b", "old");
    EXPECT_EQ(failureOf([&] { copyFileContents(folder / "a", folder / "b", true); }),
              std::errc::file_exists);
    EXPECT_EQ(contents("b"), "old");
    copyFileContents(folder / "a", folder / "b", false);
    EXPECT_EQ(contents("b"), "new");
}

TEST_F(FilesTest, ACopyRefusesAReadOnlyTarget)
{
    given("a", "new");
    given("b", "old");
    fs::permissions(folder / "b", fs::perms(0444));
    EXPECT_EQ(failureOf([&] { copyFileContents(folder / "a", folder / "b", false); }),
              std::errc::permission_denied);
    EXPECT_EQ(contents("b"), "old");
}

TEST_F(FilesTest, ACopyThatFailsLeavesWhatWasThere)
{
    using enum FileOperation;
    for (FileOperation step : {Copy, Open, Create, Read, Write, Flush, Replace}) {
        given("a", "new");
        given("b", "old");
        ProbeLog log(step);
        EXPECT_EQ(failureOf([&] { copyFileContents(folder / "a", folder / "b", false); }),
                  std::errc::io_error)
            << nameOf(step);
        hooks::setFileProbe({});
        EXPECT_EQ(contents("b"), "old") << nameOf(step);
        EXPECT_EQ(everything(), (Names{"a", "b"})) << nameOf(step);
    }
}

TEST_F(FilesTest, FlushesFilesAndFolders)
{
    given("a", "1");
    EXPECT_EQ(failureOf([&] { flushFileToDisk(folder / "a"); }), std::error_code());
    EXPECT_EQ(failureOf([&] { flushFolder(folder.path()); }), std::error_code());
    EXPECT_EQ(failureOf([&] { flushFileToDisk(folder / "none"); }),
              std::errc::no_such_file_or_directory);
    EXPECT_EQ(failureOf([&] { flushFolder(folder / "a"); }), std::errc::not_a_directory);
}

struct Probed {
    FileOperation operation;
    void (*run)(const fs::path& folder);
    Names asked;
};

class FilesProbeTest : public testing::TestWithParam<Probed> {
protected:
    void SetUp() override
    {
        writeBytes(folder / "a", "1");
        writeBytes(folder / "old", "2");
    }
    TempFolder folder;
};

TEST_P(FilesProbeTest, IsAskedBeforeTheOperationAndInOrder)
{
    ProbeLog log;
    GetParam().run(folder.path());
    std::replace(log.asked.begin(), log.asked.end(),
                 "FlushFolder " + folder.path().filename().string(),
                 std::string("FlushFolder FOLDER"));
    EXPECT_EQ(log.asked, GetParam().asked);
}

TEST_P(FilesProbeTest, MakesTheOperationFailBeforeAnythingHappens)
{
    ProbeLog log(GetParam().operation, std::errc::no_space_on_device);
    EXPECT_EQ(failureOf([&] { GetParam().run(folder.path()); }), std::errc::no_space_on_device);
    EXPECT_EQ(readBytes(folder / "a"), "1");
    EXPECT_EQ(readBytes(folder / "old"),
              GetParam().operation == FileOperation::FlushFolder ? "new" : "2");
}

INSTANTIATE_TEST_SUITE_P(
    Operations, FilesProbeTest,
    testing::Values(
        Probed{FileOperation::Open,
               [](const fs::path& f) { OpenFile(f / "a", OpenFile::Mode::Read); },
               {"Open a"}},
        Probed{FileOperation::Read,
               [](const fs::path& f) { readFile(f / "a"); },
               {"Open a", "Read a", "Read a"}},
        Probed{FileOperation::Create,
               [](const fs::path& f) { OpenFile(f / "new", OpenFile::Mode::Create); },
               {"Create new"}},
        Probed{FileOperation::Write,
               [](const fs::path& f) { OpenFile(f / "new", OpenFile::Mode::CreateNew).write("x"); },
               {"Create new", "Write new"}},
        Probed{
            FileOperation::Flush, [](const fs::path& f) { flushFileToDisk(f / "a"); }, {"Flush a"}},
        Probed{FileOperation::Truncate,
               [](const fs::path& f) { probeFile(FileOperation::Truncate, f / "a"); },
               {"Truncate a"}},
        Probed{FileOperation::Rename,
               [](const fs::path& f) { renameFile(f / "a", f / "new"); },
               {"Rename a"}},
        Probed{FileOperation::Replace,
               [](const fs::path& f) { replaceFile(f / "a", f / "old"); },
               {"Replace old"}},
        Probed{FileOperation::Link,
               [](const fs::path& f) { linkFile(f / "a", f / "new"); },
               {"Link new"}},
        Probed{FileOperation::Remove, [](const fs::path& f) { removeFile(f / "a"); }, {"Remove a"}},
        Probed{FileOperation::List, [](const fs::path& f) { fileNames(f / "."); }, {"List ."}},
        Probed{FileOperation::List, [](const fs::path& f) { folderNames(f / "."); }, {"List ."}},
        Probed{FileOperation::List, [](const fs::path& f) { entryNames(f / "."); }, {"List ."}},
        Probed{FileOperation::Copy,
               [](const fs::path& f) { copyFileContents(f / "a", f / "new", true); },
               {"Copy a", "Create new.side", "Open a", "Read a", "Write new.side", "Read a",
                "Flush new.side", "Rename new.side", "FlushFolder FOLDER"}},
        Probed{FileOperation::FlushFolder,
               [](const fs::path& f) { replaceContents(f / "old", "new"); },
               {"Create old.side", "Write old.side", "Flush old.side", "Replace old",
                "FlushFolder FOLDER"}}));

}
