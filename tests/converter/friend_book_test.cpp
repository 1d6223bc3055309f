#include "converter/friend_book.h"
#include "platform/system/test_hooks.h"

#include "converter/friend_reader.h"
#include "platform/runtime/codepage932.h"
#include "platform/system/files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

class FriendBookTest : public testing::Test {
protected:
    FriendBookTest() { fs::create_directory(book()); }

    fs::path book() const { return folder_ / "book"; }
    fs::path temp() const { return folder_ / "Friend.Tmp"; }
    void given(const std::string& name, const std::string& bytes)
    {
        writeBytes(book() / name, bytes);
    }
    void givenFriend(const std::string& file, const std::string& name, const std::string& address)
    {
        given(file, "1,p," + name + "," + address + ",1\r\n");
    }
    Conversion convert() const { return convertFriendBook(book(), temp()); }
    std::string namesRead() const
    {
        std::string names;
        for (const ReadFriend& read : readFriendTmp(temp()))
            names += read.name + " ";
        return names;
    }
    void expectResult(ConversionStatus status, int count, const std::string& names) const
    {
        const Conversion result = convert();
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.count, count);
        EXPECT_EQ(namesRead(), names);
        EXPECT_FALSE(fs::exists(folder_ / "Friend.Tmp.part"));
    }

    TempFolder folder_;
};

TEST_F(FriendBookTest, WritesRecordsAsTheFieldInputReadsThem)
{
    given("a.csv", "9,クッキー,たろう,taro@example.com,12\n");
    expectResult(ConversionStatus::Converted, 1, "たろう ");
    EXPECT_EQ(readBytes(temp()),
              toAnsi(u"\"9\",\"クッキー\",\"たろう\",\"taro@example.com\",12\r\n"));
}

TEST_F(FriendBookTest, FilesComeByNameAndOthersAreNotLookedAt)
{
    givenFriend("c.csv", "C", "c@example.com");
    givenFriend("B.CSV", "B", "b@example.com");
    given("a.VcF", "BEGIN:VCARD\nFN:A\nEMAIL:a@example.com\nEND:VCARD\n");
    givenFriend("d.txt", "D", "d@example.com");
    givenFriend("csv", "E", "e@example.com");
    expectResult(ConversionStatus::Converted, 3, "B A C ");
}

TEST_F(FriendBookTest, AnAddressIsWrittenOnceWhateverItsCase)
{
    given("a.csv", "1,,A,taro@example.com\n1,,B,Taro@Example.COM\n");
    givenFriend("b.csv", "C", "TARO@example.com");
    expectResult(ConversionStatus::Converted, 1, "A ");
}

TEST_F(FriendBookTest, WithoutFriendsAnOlderFileStays)
{
    writeBytes(temp(), "old");
    EXPECT_EQ(convert().status, ConversionStatus::Converted);
    given("a.csv", "name,address\n");
    EXPECT_EQ(convert().status, ConversionStatus::Converted);
    EXPECT_EQ(convert().count, 0);
    EXPECT_EQ(readBytes(temp()), "old");
}

TEST_F(FriendBookTest, AMissingFolderIsUnreadableAndNothingIsWritten)
{
    for (const fs::path& missing : {folder_ / "none", fs::path(), folder_ / "file"}) {
        writeBytes(folder_ / "file", "1,p,n,a@example.com\n");
        const Conversion result = convertFriendBook(missing, temp());
        EXPECT_EQ(result.status, ConversionStatus::Unreadable);
        EXPECT_EQ(result.count, 0);
    }
    EXPECT_FALSE(fs::exists(temp()));
}

TEST_F(FriendBookTest, WhatIsNoPlainFileCostsItselfAlone)
{
    givenFriend("z.csv", "Z", "z@example.com");
    fs::create_directory(book() / "folder.vcf");
    fs::create_symlink("loop.vcf", book() / "loop.vcf");
    fs::create_symlink("nowhere", book() / "nothing.csv");
    expectResult(ConversionStatus::Converted, 1, "Z ");
    ASSERT_EQ(mkfifo((book() / "pipe.vcf").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", book() / "endless.csv");
    expectResult(ConversionStatus::Incomplete, 1, "Z ");
}

TEST_F(FriendBookTest, AFileThatCannotBeReadIsToldAndTheOthersCount)
{
    givenFriend("a.csv", "A", "a@example.com");
    givenFriend("b.csv", "B", "b@example.com");
    hooks::setFileProbe([](FileOperation operation, const fs::path& path) {
        if (operation == FileOperation::Read && path.filename() == "a.csv")
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    const Conversion result = convert();
    hooks::setFileProbe({});
    EXPECT_EQ(result.status, ConversionStatus::Incomplete);
    EXPECT_EQ(result.count, 1);
    EXPECT_EQ(namesRead(), "B ");
}

TEST_F(FriendBookTest, AFileThatIsTooLargeIsLeftOut)
{
    givenFriend("a.csv", "A", "a@example.com");
    givenFriend("b.csv", "B", "b@example.com");
    fs::resize_file(book() / "b.csv", 100u << 20);
    expectResult(ConversionStatus::Incomplete, 1, "A ");
}

std::string manyFriends(int count, const std::string& domain)
{
    std::string lines;
    for (int number = 0; number < count; ++number)
        lines += "1,p,n," + std::to_string(number) + domain + "\n";
    return lines;
}

TEST_F(FriendBookTest, AFileBeyondWhatTheCountCanTellIsLeftOut)
{
    givenFriend("a.csv", "A", "a@example.com");
    given("b.csv", manyFriends(32767, "@b.example"));
    givenFriend("c.csv", "C", "c@example.com");
    expectResult(ConversionStatus::Incomplete, 2, "A C ");
    given("b.csv", manyFriends(32765, "@b.example"));
    EXPECT_EQ(convert().status, ConversionStatus::Converted);
    EXPECT_EQ(convert().count, 32767);
}

TEST_F(FriendBookTest, AFailedWriteLeavesTheOlderFileAndCountsNothing)
{
    givenFriend("a.csv", "A", "a@example.com");
    writeBytes(temp(), "old");
    for (const FileOperation failing : {FileOperation::Create, FileOperation::Write,
                                        FileOperation::Flush, FileOperation::Replace}) {
        hooks::setFileProbe([&](FileOperation operation, const fs::path&) {
            if (operation == failing)
                throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
        });
        const Conversion result = convert();
        hooks::setFileProbe({});
        EXPECT_EQ(result.status, ConversionStatus::Failed);
        EXPECT_EQ(result.count, 0);
        EXPECT_EQ(result.failure, std::errc::no_space_on_device);
        EXPECT_EQ(readBytes(temp()), "old");
        EXPECT_FALSE(fs::exists(folder_ / "Friend.Tmp.part"));
    }
}

}
}
