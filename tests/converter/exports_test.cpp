// The built library itself, loaded like the program loads it.
#include "converter/exports.h"

#include "converter/record_fields.h"
#include "converter/temp_reader.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <cerrno>

#include <dlfcn.h>

namespace tolvek::test {
namespace {

const std::filesystem::path kFolder = std::filesystem::path(TOLVEK_TEST_DATA) / "mail";

class ExportsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        library_ = dlopen(TOLVEK_CONVERTER_FILE, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library_, nullptr) << dlerror();
        edit_ = reinterpret_cast<decltype(&Tolvek_Edit)>(dlsym(library_, "Tolvek_Edit"));
        friendEdit_ =
            reinterpret_cast<decltype(&TolvekFriend_Edit)>(dlsym(library_, "TolvekFriend_Edit"));
        change_ = reinterpret_cast<decltype(&Mail_StrChange)>(dlsym(library_, "Mail_StrChange"));
        editFiles_ =
            reinterpret_cast<decltype(&Tolvek_EditFiles)>(dlsym(library_, "Tolvek_EditFiles"));
        ASSERT_TRUE(edit_ != nullptr && friendEdit_ != nullptr && change_ != nullptr &&
                    editFiles_ != nullptr);
    }
    void TearDown() override
    {
        if (library_ != nullptr) dlclose(library_);
    }

    template <class Record> static Record record(const std::string& text)
    {
        Record filled;
        fillRecord(filled.bytes, sizeof filled.bytes, text);
        return filled;
    }

    void edit(const std::string& mailFile, const std::string& tempFile)
    {
        auto list = record<TolvekPath>("unused.ppl");
        auto mail = record<TolvekPath>(mailFile);
        auto temp = record<TolvekPath>(tempFile);
        edit_(&list, &mail, &temp, &count_, &status_);
    }

    int friendEdit(const std::string& name)
    {
        auto book = record<StrChangeRec>((folder_ / name).string());
        auto temp = record<StrChangeRec>((folder_ / "Friend.Tmp").string());
        return friendEdit_(&book, &temp, &count_, &status_);
    }

    void* library_ = nullptr;
    decltype(&Tolvek_Edit) edit_ = nullptr;
    decltype(&TolvekFriend_Edit) friendEdit_ = nullptr;
    decltype(&Mail_StrChange) change_ = nullptr;
    decltype(&Tolvek_EditFiles) editFiles_ = nullptr;
    std::int16_t count_ = 99;
    std::int16_t status_ = 99;
    TempFolder folder_;
};

TEST_F(ExportsTest, ShowsNothingBesideItsThreeFunctions)
{
    EXPECT_EQ(dlsym(library_, "_ZN6tolvek14convertMailBoxERKNSt10filesystem7__cxx114pathES4_"),
              nullptr);
}

TEST_F(ExportsTest, ConvertsABoxUnderAJapanesePath)
{
    const auto box = folder_ / "受信メール.ppm";
    std::filesystem::copy_file(kFolder / "mbox_three.mbox", box);
    edit(box.string(), (folder_ / "Tolvek.Tmp").string());
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(count_, 3);
    EXPECT_EQ(readTemp(folder_ / "Tolvek.Tmp").size(), 3u);
}

TEST_F(ExportsTest, FindsABoxWhoseNameDiffersInCase)
{
    std::filesystem::copy_file(kFolder / "jis_declared.eml", folder_ / "MAIL.PPM");
    edit((folder_ / "mail.ppm").string(), (folder_ / "Tolvek.Tmp").string());
    EXPECT_EQ(count_, 1);
}

TEST_F(ExportsTest, WritesTheStatusOnEveryCall)
{
    const std::string temp = (folder_ / "Tolvek.Tmp").string();
    edit((kFolder / "broken_binary.ppm").string(), temp);
    EXPECT_NE(status_, 0);
    EXPECT_EQ(count_, 0);
    edit((kFolder / "empty.ppm").string(), temp);
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(count_, 0);
}

TEST_F(ExportsTest, RefusesFoldersEmptyAndOverlongPaths)
{
    const std::string temp = (folder_ / "Tolvek.Tmp").string();
    for (const std::string& path :
         {folder_.path().string() + "/", folder_.path().string(), std::string(),
          std::string(256, 'x'), std::string("\xFF\xFE")}) {
        count_ = status_ = 99;
        edit(path, temp);
        EXPECT_NE(status_, 0) << path;
        EXPECT_EQ(count_, 0) << path;
    }
}

TEST_F(ExportsTest, TempFileThatCannotBeWrittenIsAStatus)
{
    edit((kFolder / "jis_declared.eml").string(), (folder_ / "none" / "Tolvek.Tmp").string());
    EXPECT_NE(status_, 0);
    EXPECT_EQ(count_, 0);
}

TEST_F(ExportsTest, TakesPathsOfAnyLengthByName)
{
    std::filesystem::path deep = folder_.path();
    for (int n = 0; n < 20; ++n)
        deep /= "受信フォルダ受信フォルダ";
    std::filesystem::create_directories(deep);
    std::filesystem::copy_file(kFolder / "mbox_three.mbox", deep / "受信メール.ppm");
    const std::string mail = (deep / "受信メール.ppm").string();
    const std::string temp = (deep / "Tolvek.Tmp").string();
    EXPECT_EQ(editFiles_("", mail.c_str(), temp.c_str(), &count_, &status_), 0);
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(count_, 3);
    EXPECT_EQ(readTemp(temp).size(), 3u);
}

TEST_F(ExportsTest, TellsByTheSystemsNumberWhatEveryBoxWouldMeet)
{
    const std::string mail = (kFolder / "mbox_three.mbox").string();
    const std::string nowhere = (folder_ / "none" / "Tolvek.Tmp").string();
    const std::string temp = (folder_ / "Tolvek.Tmp").string();
    EXPECT_EQ(editFiles_("", mail.c_str(), nowhere.c_str(), &count_, &status_), ENOENT);
    EXPECT_NE(status_, 0);
    EXPECT_EQ(editFiles_("", nowhere.c_str(), temp.c_str(), &count_, &status_), 0);
    EXPECT_NE(status_, 0) << "a box that isn't there is passed over";
}

void take(void* notes, std::int32_t why, const char* what)
{
    static_cast<std::vector<std::string>*>(notes)->push_back(std::to_string(why) + " " + what);
}

TEST_F(ExportsTest, NotesWhatTheTempFileLacks)
{
    const auto noted =
        reinterpret_cast<decltype(&Tolvek_EditNoted)>(dlsym(library_, "Tolvek_EditNoted"));
    ASSERT_NE(noted, nullptr);
    const auto box = folder_ / "box";
    writeBytes(box, "From - \nTo: a@b.jp\nSubject: x\n\nletter\n");
    const std::string temp = (folder_ / "Tolvek.Tmp").string();
    std::vector<std::string> notes;
    std::int32_t mails = 99;
    EXPECT_EQ(noted("", box.c_str(), temp.c_str(), &count_, &status_, &mails, take, &notes), 0);
    EXPECT_EQ(count_, 1);
    EXPECT_EQ(mails, 1);
    EXPECT_EQ(notes, std::vector<std::string>{"1 To: a@b.jp\nSubject: x"});
    EXPECT_EQ(noted(nullptr, nullptr, nullptr, &count_, &status_, nullptr, nullptr, nullptr), 0);
    EXPECT_NE(status_, 0);
}

TEST_F(ExportsTest, BearsMissingRecords)
{
    EXPECT_EQ(editFiles_(nullptr, nullptr, nullptr, &count_, &status_), 0);
    EXPECT_NE(status_, 0);

    edit_(nullptr, nullptr, nullptr, &count_, &status_);
    EXPECT_NE(status_, 0);
    edit_(nullptr, nullptr, nullptr, nullptr, nullptr);
    friendEdit_(nullptr, nullptr, nullptr, nullptr);
    change_(nullptr, nullptr, nullptr);
}

TEST_F(ExportsTest, WritesTheFriendBookOfAFolder)
{
    std::filesystem::create_directory(folder_ / "おともだち帳");
    writeBytes(folder_ / "おともだち帳" / "a.csv", "9,Max,Ken,ken@example.org,3\n");
    friendEdit("おともだち帳");
    EXPECT_EQ(status_, 0);
    EXPECT_EQ(count_, 1);
    EXPECT_EQ(readBytes(folder_ / "Friend.Tmp"), "\"9\",\"Max\",\"Ken\",\"ken@example.org\",3\r\n");
}

TEST_F(ExportsTest, FindsAFriendFolderOfDecomposedKana)
{
    const std::string decomposed = toUtf8(u"おともた\u3099ち帳");
    std::filesystem::create_directory(folder_ / decomposed);
    writeBytes(folder_ / decomposed / "a.csv", ",,Ken,ken@example.org\n");
    friendEdit("おともだち帳");
    EXPECT_EQ(count_, 1);
}

TEST_F(ExportsTest, AMissingFriendFolderIsAStatusAndWritesNothing)
{
    friendEdit("おともだち帳");
    EXPECT_NE(status_, 0);
    EXPECT_EQ(count_, 0);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "Friend.Tmp"));
}

TEST_F(ExportsTest, DecodesATextFromRecordToRecord)
{
    auto input = record<StrChangeRec>(toAnsi(u"Subject:=?utf-8?B?44GC?='"));
    StrChangeRec output{};
    std::int16_t length = 0;
    change_(&input, &output, &length);
    EXPECT_EQ(length, 10);
    EXPECT_EQ(utf8OfAnsi(recordText(output.bytes, sizeof output.bytes)), "Subject:あ’");
    EXPECT_EQ(output.bytes[4607], ' ');
}

TEST_F(ExportsTest, BearsARecordWithoutANul)
{
    StrChangeRec input;
    std::fill(std::begin(input.bytes), std::end(input.bytes), 'x');
    StrChangeRec output{};
    std::int16_t length = 0;
    change_(&input, &output, &length);
    EXPECT_EQ(length, 4608);
    EXPECT_EQ(output.bytes[4607], 'x');
}

// The caller couldn't distinguish it from an empty book.
TEST_F(ExportsTest, WhatKeepsTheFriendFileFromBeingWrittenIsTheReturnValue)
{
    std::filesystem::create_directory(folder_ / "book");
    writeBytes(folder_ / "book" / "a.csv", "1,p,n,a@example.com\n");
    const auto temp = folder_ / "Friend.Tmp";
    std::filesystem::create_directory(temp);
    EXPECT_EQ(friendEdit("book"), EISDIR);
    EXPECT_EQ(count_, 0);
    EXPECT_EQ(friendEdit("none"), 0);
    std::filesystem::remove(temp);
    EXPECT_EQ(friendEdit("book"), 0);
    EXPECT_EQ(count_, 1);
}

}
}
