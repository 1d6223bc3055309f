#include "import/tmp_read.h"
#include "import_fixture.h"
#include "platform/system/test_hooks.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

struct Letter {
    Text from = u"太郎 <taro@x.jp>";
    Text to = u"花子 <hanako@y.jp>";
    Text subject = u"やあ";
    Text date = u"Tue, 15 Feb 2000 10:11:12 +0900";
    std::vector<Text> text = {u"元気？"};
};

// Ten characters: bit 3 of the length is set, so a stored mail is found early.
const Text kTen = u"tarou@x.jp";
// Sixteen characters: bit 3 is clear.
const Text kSixteen = u"taro-yamada@x.jp";

class TmpReadTest : public ImportTest {
protected:
    static void append(std::vector<Text>& lines, const Letter& letter)
    {
        lines.insert(lines.end(), {u"From:" + letter.from, u"To:" + letter.to,
                                   u"Subject:" + letter.subject, u"Date:" + letter.date, u"Mail"});
        lines.insert(lines.end(), letter.text.begin(), letter.text.end());
        lines.push_back(u"<End>");
    }
    void given(const std::vector<Letter>& letters)
    {
        std::vector<Text> lines = {u"<Start>"};
        for (const Letter& letter : letters)
            append(lines, letter);
        givenTmpLines(lines);
    }
    static void read() { tmpRead(0, 0, 12); }
    std::vector<Text> subjects() { return column(u"tblTolvek_Subject"); }

    static Letter at(int second, const Text& subject = u"やあ")
    {
        Letter letter;
        letter.subject = subject;
        letter.date = u"15 Feb 2000 10:11:" + decimal(second);
        return letter;
    }
    static void doNotRead(Int16 termsCode, const Text& data)
    {
        gNonCopyRule[0] = {10, termsCode, 1, u"rule", data};
        gNonCopyRuleCnt = 1;
    }
    // As the friend editor can leave a friend: a statement would refuse its quote.
    static void addFriendByHand(const Text& address, const Text& name, const Text& pet)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Recordset friends = opened.OpenRecordset(Statement{u"SELECT * FROM tblFriend"});
        friends.AddNew();
        int position = 0;
        for (const Text& text : {Text(u"くま"), pet, name, address})
            friends.setField(position++, text);
        friends.setField(4, 0);
        friends.Update();
        opened.Close();
    }
    static std::vector<Text> manyLines(int count)
    {
        std::vector<Text> lines;
        for (int i = 1; i <= count; ++i)
            lines.push_back(u"line " + decimal(i));
        return lines;
    }
    // How often a text of the mail was passed to the converter; never when it was
    // skipped.
    int timesRead(TextView piece) const
    {
        int times = 0;
        for (const Text& text : decoded())
            times += text.find(piece) != Text::npos ? 1 : 0;
        return times;
    }
};

TEST_F(TmpReadTest, MailsBeyondTheCountAreReadWithoutABox)
{
    std::vector<Text> lines(32769, u"<End>");
    lines.front() = u"<Start>";
    append(lines, Letter{});
    givenTmpLines(lines);
    read();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TmpReadTest, StoresTheMailsOfABox)
{
    given({at(10, u"一"), at(11, u"二")});
    read();
    ASSERT_EQ(subjects(), (std::vector<Text>{u"一", u"二"}));
    EXPECT_EQ(column(u"tblTolvek_YMD").front(), u"20000215");
    EXPECT_EQ(column(u"tblTolvek_HMS").front(), u"101110");
    EXPECT_EQ(column(u"tblTolvek_SndName").front(), u"太郎");
    EXPECT_EQ(column(u"tblTolvek_SndAdd").front(), u"taro@x.jp");
    EXPECT_EQ(column(u"tblTolvek_RcvName").front(), u"花子");
    EXPECT_EQ(column(u"tblTolvek_RcvAdd").front(), u"hanako@y.jp");
    EXPECT_EQ(column(u"tblTolvek_Mail1").front(), u"元気？\r\n");
    EXPECT_EQ(column(u"tblTolvek_SndRcvFlag").front(), u"False");
}

TEST_F(TmpReadTest, HandsTheSideToTheAddressesAndTheFlagToTheStore)
{
    Letter letter;
    letter.to = u"";
    given({letter});
    tmpRead(-1, -1, 1);
    EXPECT_EQ(stored(u"tblTolvek_RcvAdd"), u"設定無し");
    EXPECT_EQ(stored(u"tblTolvek_SndRcvFlag"), u"True");
    letter.date = u"15 Feb 2000 10:11:13";
    given({letter});
    tmpRead(0, 0, 1);
    EXPECT_EQ(column(u"tblTolvek_RcvAdd").back(), u"me@home.jp");
}

TEST_F(TmpReadTest, DoesNothingWithoutAFile)
{
    read();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(TmpReadTest, PassesOverAnyPreambleUpToTheMarker)
{
    std::vector<Text> lines = {u"From:nobody <no@x.jp>",
                               u"Mail",
                               u"text of <Start> here",
                               u"<End>",
                               u" <Start",
                               u"x,\"quoted, with commas\r\nand lines\",y"};
    lines.push_back(u"more,<Start>");
    append(lines, {});
    givenTmpLines(lines);
    read();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(stored(u"tblTolvek_SndName"), u"太郎");
}

TEST_F(TmpReadTest, StoresNothingWithoutAMarker)
{
    for (const char16_t* almost : {u"<start>", u"<Start>x", u"x<Start>", u""}) {
        std::vector<Text> lines = {almost};
        append(lines, {});
        givenTmpLines(lines);
        read();
        EXPECT_EQ(rows(u"tblTolvek"), 0) << toUtf8(almost);
    }
}

TEST_F(TmpReadTest, ReportsAPreambleThatEndsInBlanks)
{
    givenTmp(u"no marker\r\n   ");
    read();
    EXPECT_EQ(takeReports(), Reports{"tmpRead 62"});
}

TEST_F(TmpReadTest, LosesAMailWithoutAnEndLineWithoutAWord)
{
    std::vector<Text> lines = {u"<Start>"};
    append(lines, at(10, u"一"));
    append(lines, at(11, u"二"));
    lines.pop_back();
    givenTmpLines(lines);
    read();
    EXPECT_EQ(subjects(), std::vector<Text>{u"一"});
    givenTmpLines({u"<Start>", u"From:太郎 <taro@x.jp>", u"Date:15 Feb 2000 10:11:12"});
    read();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TmpReadTest, SwallowsTheNextMailWhereAnEndLineIsMissing)
{
    std::vector<Text> lines = {u"<Start>"};
    append(lines, at(10, u"一"));
    lines.pop_back();
    append(lines, at(11, u"二"));
    append(lines, at(12, u"三"));
    givenTmpLines(lines);
    read();
    EXPECT_EQ(subjects(), (std::vector<Text>{u"一", u"三"}));
    EXPECT_NE(column(u"tblTolvek_Mail1").front().find(u"Subject:二\r\n"), Text::npos);
}

TEST_F(TmpReadTest, ReadsBodyLinesThatLookLikeHeadingsAsText)
{
    Letter letter;
    letter.text = {u"From:nobody <no@x.jp>", u"To:nobody", u"Subject:none",
                   u"Date:1 Jan 1999 1:1:1", u"Mail",      u" <End>"};
    given({letter});
    read();
    EXPECT_EQ(stored(u"tblTolvek_SndName"), u"太郎");
    EXPECT_EQ(stored(u"tblTolvek_Mail1"),
              u"From:nobody <no@x.jp>\r\nTo:nobody\r\nSubject:none\r\nDate:1 Jan 1999 1:1:1\r\n"
              u"Mail\r\n <End>\r\n");
}

TEST_F(TmpReadTest, TakesBodyLinesForHeadingsWhileThereIsNoDate)
{
    Letter letter;
    letter.date = u"";
    letter.text = {u"From here on", u"Date:15 Feb 2000 10:11:12", u"Mailing list", u"rest"};
    given({letter});
    read();
    ASSERT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(stored(u"tblTolvek_SndName"), u"here on");
    EXPECT_EQ(stored(u"tblTolvek_Mail1"), u"rest\r\n");
}

TEST_F(TmpReadTest, DropsAMailWithoutADateAndGoesOn)
{
    Letter letter;
    letter.date = u"";
    given({letter, at(11, u"二")});
    read();
    EXPECT_EQ(subjects(), std::vector<Text>{u"二"});
}

TEST_F(TmpReadTest, ReportsABadDateUnderItsOwnNameAndGoesOn)
{
    Letter notANumber = at(10), cutOff = at(10);
    notANumber.date = u"Tuesday, 15 Feb 2000 10:11:12";
    cutOff.date = u"15 Feb";
    given({notANumber, cutOff, at(11, u"三")});
    read();
    EXPECT_EQ(takeReports(), (Reports{"tmpRead 13", "tmpRead 6"}));
    EXPECT_EQ(subjects(), std::vector<Text>{u"三"});
}

TEST_F(TmpReadTest, DropsAMailWithoutText)
{
    Letter empty = at(10), blankLines = at(11), blanks = at(12, u"空白");
    empty.text = {};
    blankLines.text = {u"", u"", u""};
    blanks.text = {u"  "};
    given({empty, blankLines, blanks});
    read();
    EXPECT_EQ(subjects(), std::vector<Text>{u"空白"});
}

TEST_F(TmpReadTest, KnowsALabelByItsExactLettersAtTheLinesStart)
{
    givenTmpLines({u"<Start>", u"From:太郎 <taro@x.jp>", u" From:a <a@x.jp>", u"FROM:b <b@x.jp>",
                   u"X-Other:c", u"To/花子 <hanako@y.jp>", u"Subject=やあ", u"subject:x",
                   u"Date 15 Feb 2000 10:11:12", u"Mail follows", u"text", u"<End>!"});
    read();
    ASSERT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(stored(u"tblTolvek_SndAdd"), u"taro@x.jp");
    EXPECT_EQ(stored(u"tblTolvek_RcvAdd"), u"hanako@y.jp");
    EXPECT_EQ(stored(u"tblTolvek_Subject"), u"やあ");
}

TEST_F(TmpReadTest, BeginsEachMailWithNothingOfTheLastOne)
{
    std::vector<Text> lines = {u"<Start>"};
    append(lines, at(10));
    lines.insert(lines.end(), {u"Date:15 Feb 2000 10:11:11", u"Mail", u"b", u"<End>"});
    givenTmpLines(lines);
    read();
    // Sender and receiver are missing, so the store refuses the row.
    EXPECT_EQ(takeReports(), Reports{"TolvekDB_Insert 3315"});
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TmpReadTest, StoresNothingNewWhenTheSameBoxIsReadTwice)
{
    Letter longOne = at(14, u"長い手紙"), noSubject = at(20, u"");
    longOne.text = manyLines(15 * 33 + 40);
    noSubject.text = longOne.text;
    given({at(10, u"一"), at(10, u"二"), at(10, u"三"), at(12), longOne, noSubject});
    read();
    const auto subjectsBefore = subjects();
    EXPECT_EQ(rows(u"tblTolvek"), 8);
    read();
    EXPECT_EQ(subjects(), subjectsBefore);
}

TEST_F(TmpReadTest, SkipsTheTextOfAStoredMailWhenItsAddressesAreTenLong)
{
    Letter letter;
    letter.from = u"太郎 <" + kTen + u">";
    letter.to = u"花子 <" + kTen + u">";
    given({letter});
    read();
    EXPECT_EQ(timesRead(u"元気？"), 1);
    read();
    EXPECT_EQ(timesRead(u"元気？"), 1);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TmpReadTest, ReadsTheTextOfAStoredMailWhenItsAddressesAreSixteenLong)
{
    Letter letter;
    letter.from = u"太郎 <" + kSixteen + u">";
    letter.to = u"花子 <" + kSixteen + u">";
    given({letter});
    read();
    read();
    EXPECT_EQ(timesRead(u"元気？"), 2);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TmpReadTest, LooksEarlyOnlyWhereTheThreeLengthsShareABit)
{
    const auto addressOf = [](int size) {
        return Text(static_cast<std::size_t>(size - 5), u'a') + u"@x.jp";
    };
    const struct {
        int sender, receiver;
        const char16_t* year;
        bool early;
    } cases[] = {
        {8, 8, u"2000", true},
        {15, 15, u"2000", true},
        {16, 16, u"2000", false},
        {23, 24, u"2000", false},
        {24, 24, u"2000", true},
        {31, 40, u"2000", true},
        {32, 32, u"2000", false},
        {47, 56, u"2000", true},
        {60, 60, u"2000", true},
        {48, 48, u"2000", false},
        {8, 7, u"2000", false},
        {7, 8, u"2000", false},
        // A three-digit year gives a date of seven characters.
        {7, 7, u"5", true},
        {8, 8, u"5", false},
        {16, 17, u"5", false},
    };
    for (const auto& each : cases) {
        Letter letter;
        letter.from = u"太郎 <" + addressOf(each.sender) + u">";
        letter.to = u"花子 <" + addressOf(each.receiver) + u">";
        letter.date = u"15 Feb " + Text(each.year) + u" 10:11:12";
        given({letter});
        read();
        const int before = timesRead(u"元気？");
        read();
        EXPECT_EQ(timesRead(u"元気？") - before, each.early ? 0 : 1)
            << each.sender << " " << each.receiver << " " << toUtf8(each.year);
    }
    EXPECT_EQ(rows(u"tblTolvek"), 15);
}

TEST_F(TmpReadTest, LooksWithTheSubjectAsItStandsAtTheDate)
{
    const std::vector<Text> lines = {u"<Start>",
                                     u"From:太郎 <" + kTen + u">",
                                     u"To:花子 <" + kTen + u">",
                                     u"Date:15 Feb 2000 10:11:12",
                                     u"Subject:おくれて",
                                     u"Mail",
                                     u"元気？",
                                     u"<End>"};
    givenTmpLines(lines);
    read();
    read();
    EXPECT_EQ(timesRead(u"元気？"), 2);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TmpReadTest, PassesOverHeadingsInTheTextOfASkippedMail)
{
    Letter letter;
    letter.from = u"太郎 <" + kTen + u">";
    letter.to = u"花子 <" + kTen + u">";
    letter.text = {u"From:x <y@z.jp>", u"Date:1 Jan 1999 1:1:1", u"Mail", u"more"};
    given({letter});
    read();
    read();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(timesRead(u"y@z.jp"), 1);
}

TEST_F(TmpReadTest, KeepsAMailOutThatADoNotReadRuleNames)
{
    doNotRead(2, u"spam@x.jp");
    Letter spam = at(10);
    spam.from = u"業者 <spam@x.jp>";
    spam.text = {u"買って"};
    given({spam, at(11, u"二")});
    read();
    EXPECT_EQ(subjects(), std::vector<Text>{u"二"});
    EXPECT_EQ(timesRead(u"買って"), 1);
    EXPECT_EQ(gStatusLines[5], u"   1 / 12  のデータを処理中です。");
}

TEST_F(TmpReadTest, ComparesARuleWithTheShortenedSubject)
{
    doNotRead(0, Text(100, u'あ'));
    given({at(10, Text(100, u'あ') + u"いう")});
    read();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    doNotRead(0, Text(100, u'あ') + u"いう");
    read();
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TmpReadTest, HasStoredThePartsOfALongMailBeforeARuleIsAsked)
{
    doNotRead(1, u"長い");
    Letter letter = at(10, u"長い手紙");
    letter.text = manyLines(2 * 15 * 33 + 1);
    given({letter});
    read();
    const Text part = u"長い手紙　　（次に続く）";
    EXPECT_EQ(subjects(), (std::vector<Text>{part, part}));
}

TEST_F(TmpReadTest, StoresThePartsOfALongMailASecondApart)
{
    Letter letter = at(59, u"長い手紙");
    letter.text = manyLines(15 * 33 + 1);
    given({letter});
    read();
    EXPECT_EQ(column(u"tblTolvek_HMS"), (std::vector<Text>{u"101159", u"101200"}));
    EXPECT_EQ(subjects(), (std::vector<Text>{u"長い手紙　　（次に続く）", u"長い手紙"}));
    EXPECT_EQ(column(u"tblTolvek_Mail1").back(), u"line 496\r\n");
}

TEST_F(TmpReadTest, MovesTheDateWhenAMailOfMidnightIsSplit)
{
    Letter letter;
    letter.date = u"31 Dec 1999 23:59:59";
    letter.text = manyLines(15 * 33 + 1);
    given({letter});
    read();
    EXPECT_EQ(column(u"tblTolvek_YMD"), (std::vector<Text>{u"19991231", u"20000101"}));
    EXPECT_EQ(column(u"tblTolvek_HMS"), (std::vector<Text>{u"235959", u"000000"}));
}

TEST_F(TmpReadTest, StoresThePartAloneWhenOnlyEmptyLinesFollow)
{
    Letter letter = at(10, u"長い手紙");
    letter.text = manyLines(15 * 33);
    letter.text.insert(letter.text.end(), 4, u"");
    given({letter});
    read();
    EXPECT_EQ(subjects(), std::vector<Text>{u"長い手紙　　（次に続く）"});
}

TEST_F(TmpReadTest, StoresFourHundredNinetyFiveLinesInOneRow)
{
    Letter letter = at(10, u"長い手紙");
    letter.text = manyLines(15 * 33);
    given({letter});
    read();
    EXPECT_EQ(subjects(), std::vector<Text>{u"長い手紙"});
    EXPECT_TRUE(stored(u"tblTolvek_Mail15").ends_with(u"line 495\r\n"));
}

TEST_F(TmpReadTest, ReportsAQuoteOfTheHandleAndStoresTheNextMail)
{
    gMyMailHandle = u"O'Neil";
    Letter toTheUser = at(10);
    toTheUser.to = u"";
    given({toTheUser, at(11, u"二")});
    read();
    EXPECT_EQ(takeReports(), Reports{"TolvekDB_Insert 3075"});
    EXPECT_EQ(subjects(), std::vector<Text>{u"二"});
}

TEST_F(TmpReadTest, ReportsAQuoteOfAPetsNameAndStoresTheNextMail)
{
    addFriendByHand(u"jiro@x.jp", u"", u"D'Artagnan");
    Letter fromAFriend = at(10);
    fromAFriend.from = u"jiro@x.jp";
    given({fromAFriend, at(11, u"二")});
    read();
    EXPECT_EQ(takeReports(), Reports{"TolvekDB_Insert 3075"});
    EXPECT_EQ(subjects(), std::vector<Text>{u"二"});
}

TEST_F(TmpReadTest, ReportsAQuoteOfADatesTailAndStoresTheNextMail)
{
    Letter odd = at(10);
    odd.date = u"15 Feb 2000 10:1'); --";
    given({odd, at(11, u"二")});
    read();
    EXPECT_EQ(takeReports(), (Reports{"duplMailCheck 3075", "TolvekDB_Edit 3075"}));
    EXPECT_EQ(subjects(), std::vector<Text>{u"二"});
}

TEST_F(TmpReadTest, StoresQuotesAndBarsOfAMailInTheirHarmlessForms)
{
    Letter letter;
    letter.subject = u"it's '); DROP TABLE tblTolvek --";
    letter.text = {u"'quoted' | piped"};
    given({letter});
    read();
    EXPECT_EQ(stored(u"tblTolvek_Subject"), u"it’s ’); DROP TABLE tblTolvek --");
    EXPECT_EQ(stored(u"tblTolvek_Mail1"), u"’quoted’ ｜ piped\r\n");
}

TEST_F(TmpReadTest, CutsValuesAtANul)
{
    const Text nul(1, u'\0');
    Letter letter;
    letter.from = u"太郎" + nul + u" <taro@x.jp>";
    letter.subject = u"やあ" + nul + u"よ";
    letter.text = {u"a" + nul + u"b"};
    given({letter, at(40, u"二")});
    read();
    EXPECT_EQ(subjects(), (std::vector<Text>{u"やあ", u"二"}));
    EXPECT_EQ(column(u"tblTolvek_SndAdd").front(), u"設定無し");
    EXPECT_EQ(column(u"tblTolvek_Mail1").front(), u"a");
}

TEST_F(TmpReadTest, TellsTheProgressOfTheMailBeingRead)
{
    std::vector<Text> seen;
    onDecode([&] { seen.push_back(gStatusLines[5]); });
    given({at(10), at(11)});
    read();
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front(), u"   0 / 12  のデータを処理中です。");
    EXPECT_EQ(seen.back(), u"   1 / 12  のデータを処理中です。");
}

// The converter's count ends there too; no mail is skipped for it.
TEST_F(TmpReadTest, AMailThatSixteenBitsCannotCountKeepsTheLastNumber)
{
    std::vector<Text> lines(32768, u"<End>");
    lines.insert(lines.begin(), u"<Start>");
    append(lines, at(10));
    givenTmpLines(lines);
    read();
    EXPECT_EQ(takeReports(), Reports{});
    EXPECT_EQ(gStatusLines[5], u"   32767 / 12  のデータを処理中です。");
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TmpReadTest, GivesUpAFileThatCannotBeOpened)
{
    given({at(10)});
    hooks::setFileProbe([](FileOperation operation, const std::filesystem::path& path) {
        if (operation == FileOperation::Open && path.extension() == ".Tmp")
            throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    read();
    hooks::setFileProbe({});
    EXPECT_EQ(takeReports(), Reports{"tmpRead 75"}) << "and not what follows from it";
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(freeFile(), 1);
}

TEST_F(TmpReadTest, GivesUpAFileThatCannotBeReadOn)
{
    given({at(10)});
    hooks::setFileProbe([](FileOperation operation, const std::filesystem::path& path) {
        if (operation == FileOperation::Read && path.extension() == ".Tmp")
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    read();
    hooks::setFileProbe({});
    EXPECT_EQ(takeReports(), Reports{"tmpRead 57"});
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(freeFile(), 1);
}

TEST_F(TmpReadTest, ClosesTheFile)
{
    given({at(10)});
    read();
    EXPECT_EQ(freeFile(), 1);
}

TEST_F(TmpReadTest, EachLineYields)
{
    givenTmpLines({u"<Start>", u"not a label", u"", u"neither is this"});
    EXPECT_EQ(yieldsOf(read), 3);
}

}
}
