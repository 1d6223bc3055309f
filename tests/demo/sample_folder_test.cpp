#include "demo/sample_folder.h"

#include "converter/conversion.h"
#include "converter/friend_reader.h"
#include "converter/temp_reader.h"
#include "demo/friend_book.h"
#include "demo/people.h"
#include "demo/travel_diary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace tolvek::test {
namespace {

std::map<std::string, std::string> filesBelow(const std::filesystem::path& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(folder).string()] = readBytes(entry.path());
    return files;
}

class SampleFolderTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        folder_ = std::make_unique<TempFolder>();
        sample::makeSampleFolder(folder_->path());
    }
    static void TearDownTestSuite() { folder_.reset(); }

    static std::filesystem::path boxPath(const sample::SampleBox& box)
    {
        return folder_->path() / toUtf8(box.folder) / toUtf8(box.mailFile);
    }

    static std::vector<ReadMail> allMails()
    {
        const TempFolder out;
        std::vector<ReadMail> all;
        for (const sample::SampleBox& box : sample::sampleBoxes()) {
            convertMailBox(boxPath(box), out / "Tolvek.Tmp");
            const auto mails = readTemp(out / "Tolvek.Tmp");
            all.insert(all.end(), mails.begin(), mails.end());
        }
        return all;
    }

    static std::unique_ptr<TempFolder> folder_;
};

std::unique_ptr<TempFolder> SampleFolderTest::folder_;

std::string addressOf(const std::string& value)
{
    return value.substr(0, value.find(' '));
}

using Identity = std::tuple<std::string, std::string, std::string, std::string>;

Identity identity(const ReadMail& mail)
{
    return {mail.date, addressOf(mail.from), addressOf(mail.to), mail.subject};
}

TEST_F(SampleFolderTest, TwoRunsGiveTheSameBytes)
{
    const TempFolder again;
    sample::makeSampleFolder(again.path());
    sample::makeSampleFolder(again.path());
    EXPECT_EQ(filesBelow(again.path()), filesBelow(folder_->path()));
    EXPECT_EQ(filesBelow(again.path()).size(), 12u);
}

TEST_F(SampleFolderTest, EveryBoxConvertsWithItsCount)
{
    const TempFolder out;
    for (const sample::SampleBox& box : sample::sampleBoxes()) {
        const Conversion result = convertMailBox(boxPath(box), out / "Tolvek.Tmp");
        EXPECT_EQ(result.status, ConversionStatus::Converted);
        EXPECT_EQ(result.count, box.mails) << toUtf8(box.mailFile);
        EXPECT_EQ(readBytes(folder_->path() / toUtf8(box.folder) / toUtf8(box.listFile)), "");
    }
}

TEST_F(SampleFolderTest, HoldsWhatItsReadmeCounts)
{
    std::set<Identity> different;
    std::set<std::string> addresses, names;
    const auto mails = allMails();
    for (const ReadMail& mail : mails) {
        different.insert(identity(mail));
        for (const std::string& value : {mail.from, mail.to}) {
            addresses.insert(addressOf(value));
            names.insert(value.find(' ') == std::string::npos ? "" : value.substr(value.find(' ')));
        }
    }
    EXPECT_EQ(mails.size(), 207u);
    EXPECT_EQ(different.size(), 192u);
    EXPECT_EQ(addresses.size(), 31u);
    EXPECT_EQ(names.size(), 30u);
}

TEST_F(SampleFolderTest, EveryMailHasDateTextSenderAndReadableCharacters)
{
    for (const ReadMail& mail : allMails()) {
        EXPECT_FALSE(mail.date.empty()) << mail.subject;
        EXPECT_GE(mail.lines.size(), 3u) << mail.subject;
        EXPECT_NE(mail.from.find('@'), std::string::npos);
        const std::string all = mail.from + mail.to + mail.subject + mail.text();
        for (const char* lost : {"〓", "=?", "縺"})
            EXPECT_EQ(all.find(lost), std::string::npos) << mail.subject;
        EXPECT_NE(all.find("example."), std::string::npos);
    }
}

TEST_F(SampleFolderTest, OneLetterIsLongerThanOneRowOfTheArchive)
{
    const auto mails = allMails();
    const auto count = std::count_if(mails.begin(), mails.end(), [](const ReadMail& mail) {
        return static_cast<int>(mail.lines.size()) == sample::kDiaryLines;
    });
    EXPECT_EQ(count, 1);
    EXPECT_GT(sample::kDiaryLines, 15 * 33);
}

ReadFriends bookOf(const std::filesystem::path& folder)
{
    const TempFolder out;
    const Conversion result = convertFriendBook(folder / "おともだち帳", out / "Friend.Tmp");
    EXPECT_EQ(result.status, ConversionStatus::Converted);
    EXPECT_EQ(result.count, sample::kFriendsWithPets + sample::kFriendsOnCards);
    return readFriendTmp(out / "Friend.Tmp");
}

TEST_F(SampleFolderTest, TheFriendBookHoldsPeopleByTheNamesThatTheirMailsHave)
{
    std::set<std::string> inMails;
    for (const ReadMail& mail : allMails())
        inMails.insert(mail.from);
    const ReadFriends book = bookOf(folder_->path());
    EXPECT_EQ(book.size(), 12u);
    for (const ReadFriend& read : book)
        EXPECT_TRUE(inMails.contains(read.address + " (" + read.name + ")")) << read.address;
}

TEST_F(SampleFolderTest, TheFriendBookHasAPetOfEachKindByItsCode)
{
    const std::map<std::string, TextView> kinds{
        {"1", u"くま"},     {"2", u"うさぎ"},     {"3", u"かめ"},     {"4", u"ねこ"},
        {"6", u"ロボット"}, {"7", u"ハムスター"}, {"8", u"ペンギン"}, {"9", u"いぬ"}};
    std::set<std::string> seen;
    for (const ReadFriend& read : bookOf(folder_->path())) {
        if (read.pet.empty()) continue;
        seen.insert(read.kind);
        const auto& people = sample::friends();
        const auto person = std::find_if(people.begin(), people.end(), [&](const auto& one) {
            return toUtf8(one.address) == read.address;
        });
        ASSERT_NE(person, people.end());
        EXPECT_EQ(person->petKind, kinds.at(read.kind));
        EXPECT_EQ(toUtf8(person->pet), read.pet);
        EXPECT_GT(read.mails, 0);
    }
    EXPECT_EQ(seen.size(), kinds.size());
}

TEST_F(SampleFolderTest, SomeOfThePeopleWriteBothWaysAndHanaToHerself)
{
    const auto mails = allMails();
    const auto toMyself = std::count_if(mails.begin(), mails.end(), [](const ReadMail& mail) {
        return addressOf(mail.from) == "hana@example.jp" && addressOf(mail.to) == "hana@example.jp";
    });
    EXPECT_EQ(toMyself, 4); // two mails, in boxes of both sides
}

}
}
