#include "letters/letter_reader.h"

#include "letters_fixture.h"
#include "support/jet_reader.h"
#include "support/other_program.h"
#include "support/test_data.h"

#include "platform/dao/alone.h"
#include "store/long_mail.h"
#include "support/errors.h"

namespace tolvek::test {
namespace {

class LetterReaderTest : public LettersFixture {
protected:
    // The parts of a long mail, as the reader of mails stores them.
    void storeParts(const Text& subject, const std::vector<Text>& texts, Text date = u"20000215",
                    Text time = u"235958")
    {
        for (std::size_t part = 0; part < texts.size(); ++part) {
            const bool isLast = part + 1 == texts.size();
            Mail made = with(isLast ? subject : subjectOfPart(subject), texts[part], date);
            made.HMS = time;
            store(made);
            addSecond(date, time);
        }
    }
};

TEST_F(LetterReaderTest, GivesEveryFieldOfALetter)
{
    Mail sent = with(u"件名", u"本文\r\n");
    sent.SndRcvFlag = true;
    sent.SubKey = 2;
    store(sent);
    const auto all = library();
    ASSERT_EQ(all->size(), 1u);
    const Letter letter = all->letter(0);
    EXPECT_EQ(letter.date, u"20000215");
    EXPECT_EQ(letter.time, u"101112");
    EXPECT_EQ(letter.subKey, 2);
    EXPECT_TRUE(letter.sent);
    EXPECT_EQ(letter.senderName, u"花子");
    EXPECT_EQ(letter.senderAddress, u"hanako@example.jp");
    EXPECT_EQ(letter.receiverName, u"太郎");
    EXPECT_EQ(letter.receiverAddress, u"taro@example.jp");
    EXPECT_EQ(letter.subject, u"件名");
    EXPECT_EQ(letter.text, u"本文\r\n");
    EXPECT_EQ(letter.year(), 2000);
    EXPECT_EQ(letter.month(), 2);
}

TEST_F(LetterReaderTest, JoinsTheBlocksOfAText)
{
    store(with(u"a", u"1\r\n"));
    Statement rest{u"UPDATE tblTolvek SET tblTolvek_Mail2 = '"};
    rest << u"2\r\n" << u"', tblTolvek_Mail16 = '" << u"16\r\n" << u"'";
    execute(rest);
    EXPECT_EQ(library()->letter(0).text, u"1\r\n2\r\n16\r\n");
}

TEST_F(LetterReaderTest, ALongMailInPartsIsOneLetter)
{
    storeParts(u"旅の日記", {u"一\r\n", u"二\r\n", u"三\r\n"});
    store(with(u"別の手紙", u"x", u"19990101"));
    const auto all = library();
    ASSERT_EQ(all->size(), 2u);
    const Letter letter = all->letter(0);
    EXPECT_EQ(letter.subject, u"旅の日記");
    EXPECT_EQ(letter.text, u"一\r\n二\r\n三\r\n");
    EXPECT_EQ(letter.date, u"20000215") << "that of the first part";
    EXPECT_EQ(letter.time, u"235958");
    EXPECT_EQ(letter.parts, 3);
    EXPECT_EQ(all->letter(1).parts, 1);
}

TEST_F(LetterReaderTest, PartsAreJoinedWithoutASubjectAndInAnyOrder)
{
    Mail second = with(u"", u"二");
    second.HMS = u"101113";
    store(second);
    Mail first = with(subjectOfPart(u""), u"一");
    store(first);
    const auto all = library();
    ASSERT_EQ(all->size(), 1u);
    EXPECT_EQ(all->letter(0).text, u"一二");
    EXPECT_EQ(all->letter(0).subject, u"");
}

// It isn't whole, and the mark says so.
TEST_F(LetterReaderTest, APartWithoutItsNextOneStaysALetter)
{
    Mail part = with(subjectOfPart(u"旅の日記"), u"一");
    store(part);
    Mail later = with(u"旅の日記", u"三");
    later.HMS = u"101114";
    store(later);
    EXPECT_EQ(subjectsOf(*library()), (Lines{"旅の日記", "旅の日記　　（次に続く）"}));
}

TEST_F(LetterReaderTest, ReadsTheFriendBook)
{
    addFriend(u"hanako@example.jp", u"はなちゃん", u"モモ");
    const auto letters = readLetterFile(live());
    ASSERT_EQ(letters->friends().size(), 1u);
    EXPECT_EQ(letters->friends()[0].address, u"hanako@example.jp");
    EXPECT_EQ(letters->friends()[0].name, u"はなちゃん");
}

TEST_F(LetterReaderTest, EndsWhereItIsTold)
{
    EXPECT_NE(readLetterFile(live(), nullptr, [] { return false; }), nullptr) << "no stretch ended";
}

TEST_F(LetterReaderTest, ReadsAnArchiveOfAnOlderVersionAndAJetFile)
{
    const JetReader reader;
    for (const auto& [name, mails] : {std::pair{"current_jet4", 56u}, {"version210_jet3", 0u}}) {
        const Path source = Path(TOLVEK_TEST_DATA) / "jet" / (std::string(name) + ".mdb");
        if (!fileExists(source)) continue;
        writeBytes(folder / "Old.Mdb", readBytes(source));
        const auto letters = readLetterFile(folder / "Old.Mdb");
        if (mails > 0)
            EXPECT_EQ(letters->rows().size(), mails);
        else
            EXPECT_GT(letters->rows().size(), 0u);
    }
}

TEST_F(LetterReaderTest, ReadsFromAFolderThatCannotBeWritten)
{
    store(with(u"a", u"b"));
    writeBytes(folder / "Tolvek.Mdb-wal", "left by a killed program");
    const auto perms = std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec;
    std::filesystem::permissions(folder.path(), perms);
    const auto letters = readLetterFile(live());
    std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(letters->rows().size(), 1u);
}

TEST_F(LetterReaderTest, ReportsWhatIsNoArchive)
{
    EXPECT_EQ(errorOf([&] { readLetterFile(folder / "None.Mdb"); }), 3024);
    writeBytes(folder / "Text.Mdb", std::string(5000, 'x'));
    EXPECT_EQ(errorOf([&] { readLetterFile(folder / "Text.Mdb"); }), 3343);
}

}
}
