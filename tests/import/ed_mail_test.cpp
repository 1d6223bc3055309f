#include "import/mail_fields.h"
#include "import_fixture.h"
#include "platform/runtime/text_files.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

class EdMailTest : public ImportTest {
protected:
    // Reads a text with edMail, from the line after the Mail line.
    void gather(const std::vector<Text>& lines, bool withEnd = true)
    {
        std::vector<Text> file = lines;
        if (withEnd) file.push_back(u"<End> of mail");
        file.push_back(u"From:next");
        givenTmpLines(file);
        done = 0; // as set by the reader at the Mail line
        const Int16 number = freeFile();
        openForInput(tmpPath(), number);
        edMail(number, line, 0, u"太郎", u"taro@x.jp", u"ぼく", u"me@home.jp", subject, ymd, hms,
               text, done);
        closeFile(number);
    }

    static std::vector<Text> numbered(int count)
    {
        std::vector<Text> lines;
        for (int i = 1; i <= count; ++i)
            lines.push_back(u"line " + decimal(i));
        return lines;
    }

    Text line = u"Mail", subject = u"長い手紙", ymd = u"20000215", hms = u"101112";
    MailBlocks text;
    Int16 done;
};

TEST_F(EdMailTest, GathersTheLinesUpToTheEndLine)
{
    gather({u"Hello", u"  world  ", u"From:here", u"Mail"});
    EXPECT_EQ(done, -1);
    EXPECT_EQ(line, u"<End> of mail");
    EXPECT_EQ(text[0], u"Hello\r\n  world  \r\nFrom:here\r\nMail\r\n");
    EXPECT_EQ(text[1], u"");
}

TEST_F(EdMailTest, EmptiesWhatTheCallerStillHeld)
{
    for (int block = 0; block <= 15; ++block)
        text[block] = u"old";
    gather({u"Hello"});
    for (int block = 1; block <= 15; ++block)
        EXPECT_EQ(text[block], u"");
}

TEST_F(EdMailTest, KeepsEveryThirdEmptyLineOfARun)
{
    const struct {
        std::size_t run, kept;
    } cases[] = {{1, 0}, {2, 0}, {3, 1}, {4, 1}, {5, 1}, {6, 2}, {8, 2}, {9, 3}};
    for (const auto& each : cases) {
        std::vector<Text> lines(each.run);
        lines.insert(lines.begin(), u"a");
        lines.push_back(u"b");
        gather(lines);
        Text expected = u"a\r\n";
        for (std::size_t i = 0; i < each.kept; ++i)
            expected += u"\r\n";
        EXPECT_EQ(text[0], expected + u"b\r\n") << each.run;
    }
}

TEST_F(EdMailTest, CountsARunOfEmptyLinesAnewBehindEachLine)
{
    gather({u"a", u"", u"", u"b", u"", u"c", u"", u"", u"d"});
    EXPECT_EQ(text[0], u"a\r\nb\r\nc\r\nd\r\n");
}

TEST_F(EdMailTest, CarriesARunOfEmptyLinesOverTheEndOfABlock)
{
    std::vector<Text> lines = numbered(33);
    lines.insert(lines.end(), 6, u"");
    gather(lines);
    EXPECT_EQ(text[1], u"\r\n\r\n");
}

TEST_F(EdMailTest, DropsBlanksAndLineEndsInFrontOfABlocksFirstText)
{
    gather({u"", u"", u"", u"  　", u"a"});
    EXPECT_EQ(text[0], u"a\r\n");
    std::vector<Text> lines = numbered(33);
    lines.insert(lines.end(), 3, u"");
    lines.push_back(u"next block");
    gather(lines);
    EXPECT_EQ(text[1], u"next block\r\n");
}

TEST_F(EdMailTest, TakesALineOfBlanksForText)
{
    gather({u"   "});
    EXPECT_EQ(done, -1);
    gather({u"a", u"", u"", u" ", u"", u"b"});
    EXPECT_EQ(text[0], u"a\r\n \r\nb\r\n");
}

TEST_F(EdMailTest, FindsNoTextInEmptyLines)
{
    gather({u"", u"", u""});
    EXPECT_EQ(done, 0);
    EXPECT_EQ(text[0], u"");
    gather({});
    EXPECT_EQ(done, 0);
}

TEST_F(EdMailTest, ClosesABlockAtThirtyThreeLines)
{
    gather(numbered(34));
    EXPECT_TRUE(text[0].ends_with(u"\r\nline 33\r\n"));
    EXPECT_EQ(text[1], u"line 34\r\n");
}

TEST_F(EdMailTest, DoesNotCountEmptyLinesAmongTheThirtyThree)
{
    std::vector<Text> lines = numbered(20);
    lines.insert(lines.end(), 30, u"");
    for (int i = 21; i <= 33; ++i)
        lines.push_back(u"line " + decimal(i));
    gather(lines);
    EXPECT_TRUE(text[0].ends_with(u"\r\nline 33\r\n"));
    EXPECT_EQ(text[1], u"");
}

TEST_F(EdMailTest, ClosesABlockPastTheConvertersRecord)
{
    // The line end is two bytes; exactly 4608 bytes don't close the block.
    gather({Text(4606, u'a'), u"b"});
    EXPECT_EQ(text[1], u"");
    gather({Text(4607, u'a'), u"b"});
    EXPECT_EQ(text[1], u"b\r\n");
    gather({Text(2303, u'あ'), u"b"});
    EXPECT_EQ(text[1], u"");
    gather({Text(2304, u'あ'), u"b"});
    EXPECT_EQ(text[1], u"b\r\n");
    gather({Text(4606, u'ｱ'), u"b"});
    EXPECT_EQ(text[1], u"");
    gather({Text(4607, u'ｱ'), u"b"});
    EXPECT_EQ(text[1], u"b\r\n");
}

TEST_F(EdMailTest, LosesWhatLiesPastTheRecord)
{
    gather({Text(4000, u'a'), Text(2000, u'b'), u"c"});
    EXPECT_EQ(text[0], Text(4000, u'a') + u"\r\n" + Text(606, u'b'));
    EXPECT_EQ(text[1], u"c\r\n");
}

TEST_F(EdMailTest, KeepsALoneLineFeedInsideItsLine)
{
    gather({u"a\nb"});
    EXPECT_EQ(text[0], u"a\nb\r\n");
}

TEST_F(EdMailTest, CutsABlockAtANul)
{
    gather({u"a" + Text(1, u'\0') + u"b", u"c"});
    EXPECT_EQ(text[0], u"a");
    EXPECT_EQ(done, -1);
}

TEST_F(EdMailTest, KeepsExactlyFifteenFullBlocksInOneRow)
{
    gather(numbered(15 * 33));
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_TRUE(text[14].ends_with(u"line 495\r\n"));
    EXPECT_EQ(text[15], u"");
    EXPECT_EQ(hms, u"101112");
}

TEST_F(EdMailTest, StoresFifteenFullBlocksAsAPartWhenALineFollows)
{
    gather(numbered(15 * 33 + 1));
    ASSERT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(stored(u"tblTolvek_Subject"), u"長い手紙　　（次に続く）");
    EXPECT_EQ(stored(u"tblTolvek_HMS"), u"101112");
    EXPECT_TRUE(stored(u"tblTolvek_Mail15").ends_with(u"line 495\r\n"));
    EXPECT_EQ(stored(u"tblTolvek_Mail16"), u"");
    EXPECT_EQ(text[0], u"line 496\r\n");
    EXPECT_EQ(text[1], u"");
    EXPECT_EQ(subject, u"長い手紙");
    EXPECT_EQ(hms, u"101113");
    EXPECT_EQ(done, -1);
}

TEST_F(EdMailTest, StoresSeveralPartsOfAVeryLongMail)
{
    gather(numbered(3 * 15 * 33 + 7));
    EXPECT_EQ(column(u"tblTolvek_HMS"), (std::vector<Text>{u"101112", u"101113", u"101114"}));
    EXPECT_EQ(column(u"tblTolvek_SubKey"), (std::vector<Text>{u"0", u"0", u"0"}));
    EXPECT_EQ(hms, u"101115");
    EXPECT_EQ(text[0].substr(0, 11), u"line 1486\r\n");
}

TEST_F(EdMailTest, StoresBarsOfAPartFullWidth)
{
    std::vector<Text> lines = numbered(15 * 33 + 1);
    lines[0] = u"a|b";
    lines[494] = u"|";
    gather(lines);
    EXPECT_TRUE(stored(u"tblTolvek_Mail1").starts_with(u"a｜b\r\n"));
    EXPECT_TRUE(stored(u"tblTolvek_Mail15").ends_with(u"\r\n｜\r\n"));
}

TEST_F(EdMailTest, StoresThePartOfAMailWithoutASubjectOnlyOnce)
{
    subject = u"";
    gather(numbered(15 * 33 + 1));
    EXPECT_EQ(stored(u"tblTolvek_Subject"), u"（次に続く）");
    hms = u"101112";
    gather(numbered(15 * 33 + 1));
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(EdMailTest, ForgetsAtASplitThatThereWasText)
{
    std::vector<Text> lines = numbered(15 * 33);
    lines.push_back(u"");
    gather(lines);
    ASSERT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(stored(u"tblTolvek_Subject"), u"長い手紙　　（次に続く）");
    EXPECT_EQ(done, 0);
    EXPECT_EQ(text[0], u"");
}

TEST_F(EdMailTest, AddsASecondForEachPartWithItsCarriesTestedInTurn)
{
    const struct {
        Text ymd, hms, nextYmd, nextHms;
    } cases[] = {
        {u"20000215", u"101112", u"20000215", u"101113"},
        {u"20000215", u"101159", u"20000215", u"101200"},
        {u"20000215", u"105959", u"20000215", u"110000"},
        {u"20000215", u"235958", u"20000215", u"235959"},
        {u"20000215", u"235959", u"20000216", u"000000"},
        {u"20000228", u"235959", u"20000229", u"000000"},
        {u"20000229", u"235959", u"20000301", u"000000"},
        {u"19990228", u"235959", u"19990301", u"000000"},
        {u"19991231", u"235959", u"20000101", u"000000"},
        // An invalid minute or hour carries too.
        {u"20000215", u"107511", u"20000215", u"111512"},
        {u"20000215", u"300000", u"20000216", u"060001"},
        // 9:05 without seconds is stored in five digits and read as 90:50:0.
        {u"19990215", u"90500", u"19990216", u"665001"},
    };
    for (const auto& each : cases) {
        ymd = each.ymd;
        hms = each.hms;
        gather(numbered(15 * 33 + 1));
        EXPECT_EQ(ymd, each.nextYmd);
        EXPECT_EQ(hms, each.nextHms);
    }
}

TEST_F(EdMailTest, GivesUpBehindAPartWhoseTimeIsNoNumber)
{
    hms = u"1023 -080000";
    gather(numbered(15 * 33 + 1));
    EXPECT_EQ(takeReports(), Reports{"edMail 13"});
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(line, u"line 496");
    EXPECT_EQ(done, -1);
    EXPECT_EQ(hms, u"1023 -080000");
}

TEST_F(EdMailTest, GivesUpBehindAPartWhoseNextDayIsNone)
{
    ymd = u"19990015";
    hms = u"235959";
    gather(numbered(15 * 33 + 1));
    EXPECT_EQ(takeReports(), Reports{"edMail 13"});
    EXPECT_EQ(ymd, u"19990015");
}

TEST_F(EdMailTest, LosesAMailWithoutAnEndLineWithoutAWord)
{
    gather({u"Hello"}, false);
    EXPECT_EQ(text[0], u"");
    EXPECT_EQ(line, u"From:next");
}

TEST_F(EdMailTest, YieldsAtEachBlockThatIsEmptiedAndAtEachLine)
{
    EXPECT_EQ(yieldsOf([&] { gather({}, false); }), 16 + 1) << "the next mail's first line";
    EXPECT_EQ(yieldsOf([&] { gather({u"a", u"", u"b"}, false); }), 16 + 3 + 1);
}

}
}
