#include "import/tolvek_db.h"
#include "import_fixture.h"

namespace tolvek::test {
namespace {

struct Post {
    Int16 flag = 0;
    Text sndName = u"太郎", sndAdd = u"taro@x.jp", rcvName = u"ぼく", rcvAdd = u"me@home.jp";
    Text subject = u"やあ", ymd = u"20000215", hms = u"101112";
};

class TolvekDbTest : public ImportTest {
protected:
    void store(const Post& mail)
    {
        TolvekDB_Edit(mail.flag, mail.sndName, mail.sndAdd, mail.rcvName, mail.rcvAdd, mail.subject,
                      mail.ymd, mail.hms, text);
        EXPECT_FALSE(gDb.isOpen());
    }
    void insert(const Post& mail, Int16 subKey)
    {
        TolvekDB_Insert(mail.flag, mail.sndName, mail.sndAdd, mail.rcvName, mail.rcvAdd,
                        mail.subject, mail.ymd, mail.hms, subKey, text);
        EXPECT_FALSE(gDb.isOpen());
    }
    static int found(const Post& mail, Int16 before = 0)
    {
        Int16 flag = before;
        duplMailCheck(mail.sndName, mail.sndAdd, mail.rcvName, mail.rcvAdd, mail.ymd, mail.hms,
                      mail.subject, flag);
        EXPECT_FALSE(gDb.isOpen());
        return flag;
    }
    std::vector<Text> subKeys() { return column(u"tblTolvek_SubKey"); }

    MailBlocks text;
};

TEST_F(TolvekDbTest, StoresAMailOnceHoweverOftenItIsRead)
{
    store({});
    store({});
    EXPECT_EQ(subKeys(), std::vector<Text>{u"0"});
}

TEST_F(TolvekDbTest, NumbersTheSubjectsOfOneSecondBetweenTwoAddresses)
{
    for (int reading = 0; reading < 2; ++reading)
        for (const char16_t* subject : {u"一", u"二", u"三"}) {
            Post mail;
            mail.subject = subject;
            store(mail);
        }
    EXPECT_EQ(subKeys(), (std::vector<Text>{u"0", u"1", u"2"}));
    EXPECT_EQ(column(u"tblTolvek_Subject"), (std::vector<Text>{u"一", u"二", u"三"}));
}

TEST_F(TolvekDbTest, CountsOnFromTheHighestSubKey)
{
    Post mail;
    mail.subject = u"五";
    insert(mail, 5);
    mail.subject = u"二";
    insert(mail, 2);
    mail.subject = u"新";
    store(mail);
    EXPECT_EQ(subKeys(), (std::vector<Text>{u"2", u"5", u"6"}));
}

TEST_F(TolvekDbTest, TakesAMailApartFromItsOwnContinuation)
{
    Post part;
    part.subject = u"やあ　　（次に続く）";
    store({});
    store(part);
    EXPECT_EQ(subKeys(), (std::vector<Text>{u"0", u"1"}));
}

TEST_F(TolvekDbTest, TellsMailsApartByEachOfTheFiveFields)
{
    store({});
    const std::pair<Text Post::*, Text> others[] = {{&Post::ymd, u"20000216"},
                                                    {&Post::hms, u"101113"},
                                                    {&Post::sndAdd, u"jiro@x.jp"},
                                                    {&Post::rcvAdd, u"you@home.jp"},
                                                    {&Post::subject, u"おい"}};
    for (const auto& [field, value] : others) {
        Post other;
        other.*field = value;
        EXPECT_EQ(found(other), 0) << toUtf8(value);
        store(other);
        EXPECT_EQ(found(other), -1) << toUtf8(value);
    }
    EXPECT_EQ(rows(u"tblTolvek"), 6);
}

TEST_F(TolvekDbTest, LetsNeitherNamesNorDirectionMakeAnotherMail)
{
    store({});
    Post same;
    same.flag = -1;
    same.sndName = u"山田";
    same.rcvName = u"別名";
    EXPECT_EQ(found(same), -1);
    store(same);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TolvekDbTest, AnswersWithTheFlagsOfTheProgram)
{
    EXPECT_EQ(found({}, -1), 0);
    store({});
    EXPECT_EQ(found({}), -1);
}

TEST_F(TolvekDbTest, StoresTheDirectionAndTheConstant)
{
    Post sent;
    sent.flag = -1;
    sent.hms = u"101113";
    store({});
    store(sent);
    EXPECT_EQ(column(u"tblTolvek_SndRcvFlag"), (std::vector<Text>{u"False", u"True"}));
    EXPECT_EQ(column(u"tblTolvek_Include"), (std::vector<Text>{u"0", u"0"}));
}

TEST_F(TolvekDbTest, TrimsNamesAddressesAndSubject)
{
    Post mail;
    mail.sndName = u" 太郎　";
    mail.sndAdd = u" taro@x.jp ";
    mail.rcvName = u"　ぼく ";
    mail.rcvAdd = u"me@home.jp ";
    mail.subject = u" やあ ";
    insert(mail, 0);
    EXPECT_EQ(stored(u"tblTolvek_SndName"), u"太郎");
    EXPECT_EQ(stored(u"tblTolvek_SndAdd"), u"taro@x.jp");
    EXPECT_EQ(stored(u"tblTolvek_RcvName"), u"ぼく");
    EXPECT_EQ(stored(u"tblTolvek_RcvAdd"), u"me@home.jp");
    EXPECT_EQ(stored(u"tblTolvek_Subject"), u"やあ");
}

TEST_F(TolvekDbTest, StoresBarsFullWidthInAllSixteenBlocks)
{
    for (int block = 0; block <= 16; ++block)
        text[block] = u"|" + decimal(block) + u"|あ|";
    store({});
    for (int block = 0; block <= 15; ++block)
        EXPECT_EQ(stored(u"tblTolvek_Mail" + decimal(block + 1)),
                  u"｜" + decimal(block) + u"｜あ｜");
}

TEST_F(TolvekDbTest, KeepsABlocksLeadingBlanksAndLineEnds)
{
    text[0] = u"  　a\r\n b\r\n　 ";
    store({});
    EXPECT_EQ(stored(u"tblTolvek_Mail1"), u"  　a\r\n b\r\n");
    EXPECT_EQ(stored(u"tblTolvek_Mail2"), u"");
    EXPECT_EQ(stored(u"tblTolvek_Mail16"), u"");
}

TEST_F(TolvekDbTest, LeavesLateBarsBehindLeadingBlanks)
{
    text[0] = u"    |a|b|"; // five characters are left once trimmed
    store({});
    EXPECT_EQ(stored(u"tblTolvek_Mail1"), u"    ｜a|b|");
}

TEST_F(TolvekDbTest, CountsTheWalkForBarsInBytes)
{
    text[0] = u"    |ああ|"; // four characters, six bytes
    store({});
    EXPECT_EQ(stored(u"tblTolvek_Mail1"), u"    ｜ああ|");
    Post next;
    next.hms = u"101113";
    text[0] = u"  |ああ|";
    store(next);
    EXPECT_EQ(column(u"tblTolvek_Mail1").back(), u"  ｜ああ｜");
}

TEST_F(TolvekDbTest, ReportsAQuoteInAValueAndGoesOnWithTheNextMail)
{
    Text Post::*const fields[] = {&Post::sndName, &Post::sndAdd, &Post::rcvName, &Post::rcvAdd,
                                  &Post::subject, &Post::ymd,    &Post::hms};
    for (Text Post::*field : fields) {
        Post bad;
        bad.*field = u"x' OR '1'='1";
        insert(bad, 0);
        EXPECT_EQ(takeReports(), Reports{"TolvekDB_Insert 3075"});
    }
    text[3] = u"it's";
    insert({}, 0);
    EXPECT_EQ(takeReports(), Reports{"TolvekDB_Insert 3075"});
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    text[3] = u"";
    store({});
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TolvekDbTest, LeavesTheAnswerAsItWasWhenTheLookUpFails)
{
    Post bad;
    bad.hms = u"101'x00";
    EXPECT_EQ(found(bad, 0), 0);
    EXPECT_EQ(takeReports(), Reports{"duplMailCheck 3075"});
    EXPECT_EQ(found(bad, -1), -1);
    EXPECT_EQ(takeReports(), Reports{"duplMailCheck 3075"});
    store(bad);
    EXPECT_EQ(takeReports(), Reports{"TolvekDB_Edit 3075"});
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(TolvekDbTest, ReportsWhatTheStoreRefuses)
{
    Post bad;
    bad.sndAdd = u"";
    store(bad);
    bad.sndAdd = u"taro@x.jp";
    bad.hms = u"12345678901234567";
    store(bad);
    EXPECT_EQ(takeReports(), (Reports{"TolvekDB_Insert 3315", "TolvekDB_Insert 3163"}));
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(TolvekDbTest, ReportsASubKeyBeyondSixteenBits)
{
    insert({}, 32767);
    Post next;
    next.subject = u"つぎ";
    store(next);
    EXPECT_EQ(takeReports(), Reports{"TolvekDB_Edit 6"});
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(TolvekDbTest, ReportsAMissingDatabaseUnderEachName)
{
    gDbPath += u".gone";
    found({});
    store({});
    insert({}, 0);
    EXPECT_EQ(takeReports(),
              (Reports{"duplMailCheck 3024", "TolvekDB_Edit 3024", "TolvekDB_Insert 3024"}));
}

}
}
