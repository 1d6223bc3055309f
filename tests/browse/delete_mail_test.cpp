#include "app/database.h"
#include "browse/delete_mail.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "store/subject_keys.h"
#include "support/archive_fixture.h"
#include "support/report_list.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

class DeleteMailTest : public ArchiveFixture {
protected:
    void TearDown() override
    {
        gFilterRule = {};
        gFilterRuleCnt = 0;
        ArchiveFixture::TearDown();
    }

    // The remaining subjects, oldest mail first.
    static Texts left() { return column(u"SELECT tblTolvek_Subject FROM tblTolvek"); }
    // A mail whose subject is its mark.
    void marked(const Text& mark, const Text& sndAdd, const Text& rcvAdd,
                const Text& sndName = u"花子", const Text& rcvName = u"太郎")
    {
        Mail made = mail(sndAdd, rcvAdd, mark, decimal(20000000 + ++mails_));
        made.SndName = sndName;
        made.RcvName = rcvName;
        store(made);
    }
    void ofSubject(const Text& subject) { marked(subject, u"a@x.jp", u"b@x.jp"); }
    // Stores the archive's only rule and lists its mails by a filter run.
    static void givenRule(int code, const Text& data)
    {
        addFilter(10, code, 0, u"見出し", data);
        tblFilter_Get();
        tblFilterData_Sel();
    }
    static void keyOf(const Mail& m)
    {
        startSubjectKeys();
        addSubjectKey(
            {m.YMD, m.HMS, m.SubKey, m.SndRcvFlag, m.SndName, m.SndAdd, m.RcvName, m.RcvAdd});
    }
    static void storeResults(int count)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        inTransaction([&] {
            for (int i = 0; i < count; ++i) {
                Statement sql{u"INSERT INTO tblFilterData ( tblFilterDt_Id, tblFilterDt_No, "
                              u"tblFilterDt_Date, tblFilterDt_Time, tblFilterDt_SubKey, "
                              u"tblFilterDt_SendName, tblFilterDt_SendAddr, tblFilterDt_RecvName, "
                              u"tblFilterDt_RecvAddr, tblFilterDt_SndRcvFlag, tblFilterDt_Subject "
                              u") VALUES( "};
                sql << i << u", 10, '20000001', '101112', 0, 'a', 'a@x.jp', 'b', 'b@x.jp', False, "
                    << u"'s' )";
                opened.Execute(sql, dbFailOnError);
            }
        });
        opened.Close();
    }
    // Puts a quote into the results that no statement could have written.
    static void quoteInResults()
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Recordset results = opened.OpenRecordset(Statement{u"SELECT * FROM tblFilterData"});
        results.AddNew();
        int position = 0;
        for (const TextView value :
             {u"5", u"10", u"20000002", u"101112", u"0", u"花子", u"a'; DROP TABLE tblTolvek; --",
              u"太郎", u"b@x.jp", u"0", u"s"})
            results.setField(position++, Text(value));
        results.Update();
        opened.Close();
    }

    int mails_ = 0;
};

// ---- one row ----

TEST_F(DeleteMailTest, ARowTakesItsOneMailWithIt)
{
    Mail gone = mail(u"a@x.jp", u"b@x.jp", u"gone");
    Mail other = gone;
    other.SubKey = 1;
    other.Subject = u"other";
    store(gone);
    store(other);
    keyOf(gone);
    delOneMail(0);
    EXPECT_EQ(left(), Texts{u"other"});
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(DeleteMailTest, ANameSetAnewSinceTheListWasFilledKeepsTheMail)
{
    Mail kept = mail(u"a@x.jp", u"b@x.jp", u"kept");
    store(kept);
    kept.SndName = u"別名";
    keyOf(kept);
    delOneMail(0);
    EXPECT_EQ(left(), Texts{u"kept"});
}

TEST_F(DeleteMailTest, ARowOutsideTheTableIsTold)
{
    ofSubject(u"kept");
    ReportList reports;
    reports.listen();
    delOneMail(-1);
    EXPECT_EQ(reports.take(), Reports{"delOneMail 9"});
    EXPECT_EQ(left(), Texts{u"kept"});
}

TEST_F(DeleteMailTest, AQuoteInARowFailsTheStatementAndHarmsNothing)
{
    ofSubject(u"kept");
    keyOf(mail(u"x' OR 'a' = 'a", u"b@x.jp"));
    ReportList reports;
    reports.listen();
    delOneMail(0);
    EXPECT_EQ(reports.take(), Reports{"delOneMail 3075"});
    EXPECT_EQ(left(), Texts{u"kept"});
    EXPECT_FALSE(gDb.isOpen());
    delMail(2, u"20000001"); // the failed transaction leaves nothing open
    EXPECT_TRUE(left().empty());
}

// The condition is the whole key: a mail that differs in one part stays.
TEST_F(DeleteMailTest, ARowsMailIsFoundByEveryPartOfItsKey)
{
    const Mail kept = mail(u"a@x.jp", u"b@x.jp", u"kept");
    store(kept);
    std::vector<Mail> others(7, kept);
    others[0].YMD = u"20000216";
    others[1].HMS = u"101113";
    others[2].SubKey = 1;
    others[3].SndName = u"別名";
    others[4].SndAdd = u"z@x.jp";
    others[5].RcvName = u"別名";
    others[6].RcvAdd = u"z@x.jp";
    for (const Mail& other : others) {
        keyOf(other);
        delOneMail(0);
        EXPECT_EQ(left(), Texts{u"kept"});
    }
    keyOf(kept);
    delOneMail(0);
    EXPECT_TRUE(left().empty());
}

// The failure shows the statement as built, with the time twice.
TEST_F(DeleteMailTest, TheConditionOfARowNamesTheTimeTwice)
{
    keyOf(mail(u"it's", u"b@x.jp"));
    boxes.expect(u"エラー番号： 3075\r\n（" +
                     errorText(3075, u"tblTolvek_YMD = '20000215' AND tblTolvek_HMS = '101112' AND "
                                     u"tblTolvek_HMS = '101112' AND tblTolvek_SubKey = 0 AND "
                                     u"tblTolvek_SndName = '花子' AND tblTolvek_SndAdd = 'it's' "
                                     u"AND tblTolvek_RcvName = '太郎' AND "
                                     u"tblTolvek_RcvAdd = 'b@x.jp'") +
                     u"）",
                 MsgAnswer::Ok, u"エラーメッセージ (delOneMail)");
    delOneMail(0);
}

// ---- an entry of the navigator ----

TEST_F(DeleteMailTest, AnAddressTakesWhatItSentAndWhatItReceived)
{
    marked(u"sent", u"a@x.jp", u"b@x.jp");
    marked(u"received", u"b@x.jp", u"a@x.jp");
    marked(u"other", u"b@x.jp", u"c@x.jp");
    delMail(0, u"a@x.jp");
    EXPECT_EQ(left(), Texts{u"other"});
}

TEST_F(DeleteMailTest, ANameTakesTheMailsOfEveryAddressWithThatName)
{
    marked(u"one", u"a@x.jp", u"b@x.jp", u"花", u"太");
    marked(u"another address", u"z@y.jp", u"b@x.jp", u"花", u"太");
    marked(u"received", u"b@x.jp", u"a@x.jp", u"太", u"花");
    marked(u"other", u"a@x.jp", u"b@x.jp", u"花子", u"太");
    delMail(1, u"花");
    EXPECT_EQ(left(), Texts{u"other"});
}

TEST_F(DeleteMailTest, ADateTakesItsDayAlone)
{
    store(mail(u"a@x.jp", u"b@x.jp", u"gone", u"20000301", u"000000"));
    store(mail(u"a@x.jp", u"b@x.jp", u"gone too", u"20000301", u"235959"));
    store(mail(u"a@x.jp", u"b@x.jp", u"other", u"20000302", u"000000"));
    delMail(2, u"20000301");
    EXPECT_EQ(left(), Texts{u"other"});
}

TEST_F(DeleteMailTest, AnyOtherTypeIsToldAndLeavesTheDatabaseOpen)
{
    ofSubject(u"kept");
    for (const int type : {3, -1}) {
        boxes.expect(u"Ｄｅｌｅｔｅ　Ｔｙｐｅ　Ｅｒｒｏｒ", MsgAnswer::Ok, u"Tolvek");
        delMail(type, u"20000001");
        EXPECT_TRUE(gDb.isOpen());
        gDb.Close();
    }
    EXPECT_EQ(left(), Texts{u"kept"});
}

TEST_F(DeleteMailTest, AQuoteInAnEntryDeletesNothing)
{
    ofSubject(u"kept");
    ReportList reports;
    reports.listen();
    for (const int type : {0, 1, 2})
        delMail(type, u"' OR 'a' = 'a");
    EXPECT_EQ(reports.take(), Reports(3, "delMail 3075"));
    EXPECT_EQ(left(), Texts{u"kept"});
}

TEST_F(DeleteMailTest, BarsNULsAndStatementsInAnEntryAreText)
{
    const Texts hostile{u"a|b", Text(u"a\0b", 3), u"\"; DROP TABLE tblTolvek; --", u"%", u"*",
                        u"a"};
    for (const Text& text : hostile)
        marked(text, text, u"b@x.jp", text);
    for (std::size_t i = 0; i < hostile.size(); ++i) {
        EXPECT_EQ(left().size(), hostile.size() - i);
        delMail(static_cast<int>(i % 2), hostile[i]);
    }
    EXPECT_TRUE(left().empty());
}

// ---- a rule, by its code ----

TEST_F(DeleteMailTest, OfCode0TheSubjectsEqualToTheConditionGoAndListedFullWidthOnesStay)
{
    for (const TextView subject : {u"ABC", u"abc", u"ＡＢＣ", u"ABCD"})
        ofSubject(Text(subject));
    givenRule(0, u"ABC");
    EXPECT_EQ(rows(u"tblFilterData"), 3);
    delFilter(0);
    EXPECT_EQ(left(), (Texts{u"ＡＢＣ", u"ABCD"}));
}

TEST_F(DeleteMailTest, OfCode1TheListedMailsGoFullWidthOnesAmongThem)
{
    for (const TextView subject : {u"xABC", u"xabc", u"xＡＢＣ"})
        ofSubject(Text(subject));
    givenRule(1, u"ABC");
    ofSubject(u"new ABC");
    delFilter(0);
    EXPECT_EQ(left(), (Texts{u"xabc", u"new ABC"}));
}

TEST_F(DeleteMailTest, OfCode2EveryMailOfTheAddressGoesListedOrNot)
{
    marked(u"sent", u"NET@x.jp", u"b@x.jp");
    marked(u"wide", u"ｎｅｔ＠ｘ．ｊｐ", u"b@x.jp");
    givenRule(2, u"net@x.jp");
    marked(u"new", u"b@x.jp", u"net@x.jp");
    marked(u"longer", u"net@x.jp.org", u"b@x.jp");
    delFilter(0);
    EXPECT_EQ(left(), (Texts{u"wide", u"longer"}));
}

TEST_F(DeleteMailTest, OfCode3OnlyTheListedMailsGo)
{
    marked(u"sent", u"a@NET.jp", u"b@x.jp");
    marked(u"wide", u"b@x.jp", u"a@ｎｅｔ.jp");
    givenRule(3, u"net");
    marked(u"new", u"a@net.jp", u"b@x.jp");
    delFilter(0);
    EXPECT_EQ(left(), Texts{u"new"});
}

TEST_F(DeleteMailTest, OfCode4EveryMailOfTheNameGoesListedOrNot)
{
    marked(u"sent", u"a@x.jp", u"b@x.jp", u"TARO", u"花子");
    marked(u"wide", u"a@x.jp", u"b@x.jp", u"ｔａｒｏ", u"花子");
    givenRule(4, u"taro");
    marked(u"new", u"a@x.jp", u"b@x.jp", u"花子", u"taro");
    marked(u"longer", u"a@x.jp", u"b@x.jp", u"taro2", u"花子");
    delFilter(0);
    EXPECT_EQ(left(), (Texts{u"wide", u"longer"}));
}

TEST_F(DeleteMailTest, OfCode5OnlyTheListedMailsGo)
{
    marked(u"kana", u"a@x.jp", u"b@x.jp", u"たろうくん", u"花子");
    marked(u"half", u"a@x.jp", u"b@x.jp", u"花子", u"ﾀﾛｳ");
    givenRule(5, u"タロウ");
    marked(u"new", u"a@x.jp", u"b@x.jp", u"タロウ", u"花子");
    delFilter(0);
    EXPECT_EQ(left(), Texts{u"new"});
}

TEST_F(DeleteMailTest, OfAnUnknownCodeNothingIsListedAndSoNothingGoes)
{
    ofSubject(u"ABC");
    givenRule(6, u"ABC");
    delFilter(0);
    EXPECT_EQ(left(), Texts{u"ABC"});
    EXPECT_EQ(rows(u"tblFilter"), 0);
}

TEST_F(DeleteMailTest, TheRuleGoesWithItsMailsAndItsResultsWaitForTheNextRun)
{
    ofSubject(u"ABC");
    addFilter(20, 1, 0, u"別", u"x");
    givenRule(1, u"ABC");
    delFilter(0);
    EXPECT_EQ(column(u"SELECT tblFilter_No FROM tblFilter"), Texts{u"20"});
    EXPECT_EQ(rows(u"tblFilterData"), 1);
}

// The number links a rule and its results: another rule's stay untouched.
TEST_F(DeleteMailTest, OnlyTheRulesOwnResultsCount)
{
    ofSubject(u"ABC");
    ofSubject(u"DEF");
    addFilter(20, 1, 0, u"別", u"DEF");
    givenRule(1, u"ABC");
    delMail_13(0);
    EXPECT_EQ(left(), Texts{u"DEF"});
    EXPECT_EQ(rows(u"tblFilter"), 2);
}

// The names may have been changed since the run; the other fields identify the mail.
TEST_F(DeleteMailTest, AListedMailIsFoundByTimePartAndAddressesWhateverItsNames)
{
    const Mail listed = mail(u"a@x.jp", u"b@x.jp", u"listed");
    std::vector<Mail> mails(6, listed);
    mails[1].HMS = u"101113";
    mails[2].SubKey = 1;
    mails[3].SndAdd = u"z@x.jp";
    mails[4].RcvAdd = u"z@x.jp";
    mails[5].YMD = u"20000216";
    store(listed);
    givenRule(1, u"listed");
    for (std::size_t i = 1; i < mails.size(); ++i)
        store(mails[i]);
    Statement renamed{u"UPDATE tblTolvek SET tblTolvek_SndName = '別名'"};
    execute(renamed << u", tblTolvek_RcvName = '別名'");
    delMail_13(0);
    EXPECT_EQ(rows(u"tblTolvek"), 5);
    Statement same{u"SELECT * FROM tblTolvek"};
    same << u" WHERE tblTolvek_YMD = '20000215' AND tblTolvek_HMS = '101112' AND "
         << u"tblTolvek_SubKey = 0 AND tblTolvek_SndAdd = 'a@x.jp' AND "
         << u"tblTolvek_RcvAdd = 'b@x.jp'";
    EXPECT_TRUE(column(same).empty());
}

TEST_F(DeleteMailTest, AListedMailThatIsGoneAlreadyIsPassedOver)
{
    ofSubject(u"ABC");
    ofSubject(u"ABC");
    givenRule(1, u"ABC");
    delMail(2, u"20000001");
    delMail_13(0);
    EXPECT_TRUE(left().empty());
}

// ---- failures of a rule's deletion ----

TEST_F(DeleteMailTest, AFailureAfterSomeRowsLeavesThoseDeletedAndTheRuleGoes)
{
    for (const TextView subject : {u"一", u"二", u"三"})
        ofSubject(Text(subject));
    givenRule(1, u"一");
    quoteInResults();
    ReportList reports;
    reports.listen();
    delFilter(0);
    EXPECT_EQ(reports.take(), Reports{"delMail_13 3075"});
    EXPECT_EQ(left(), (Texts{u"二", u"三"}));
    EXPECT_EQ(rows(u"tblFilter"), 0);
}

TEST_F(DeleteMailTest, AConditionWithAQuoteDeletesNoMailAndTheRuleGoes)
{
    ofSubject(u"kept");
    addFilter(10, 0, 0, u"見出し", u"x");
    tblFilter_Get();
    gFilterRule[0].Data = u"' OR 'a' = 'a";
    ReportList reports;
    reports.listen();
    delFilter(0);
    EXPECT_EQ(reports.take(), Reports{"delMail_024 3075"});
    EXPECT_EQ(left(), Texts{u"kept"});
    EXPECT_EQ(rows(u"tblFilter"), 0);
}

TEST_F(DeleteMailTest, ARuleWithoutAHeaderDeletesNoMailAndGoes)
{
    ofSubject(u"ABC");
    addFilter(10, 0, 0, u"見出し", u"ABC");
    tblFilter_Get();
    gFilterRule[0].Header = u" ";
    ReportList reports;
    reports.listen();
    delFilter(0);
    EXPECT_EQ(reports.take(), Reports{"delMail_024 3129"});
    EXPECT_EQ(left(), Texts{u"ABC"});
    EXPECT_EQ(rows(u"tblFilter"), 0);
}

TEST_F(DeleteMailTest, MoreResultsThanSixteenBitsCountDeleteNoMailAndTheRuleGoes)
{
    ofSubject(u"kept");
    addFilter(10, 1, 0, u"見出し", u"x");
    tblFilter_Get();
    storeResults(32768);
    ReportList reports;
    reports.listen();
    delFilter(0);
    EXPECT_EQ(reports.take(), (Reports{"GET_RECCNT 6", "delMail_13 3420"}));
    EXPECT_EQ(left(), Texts{u"kept"});
    EXPECT_EQ(rows(u"tblFilter"), 0);
}

TEST_F(DeleteMailTest, AnIndexOutsideTheTableDeletesNothing)
{
    ofSubject(u"ABC");
    givenRule(1, u"ABC");
    ReportList reports;
    reports.listen();
    delFilter(-1);
    delFilter(256);
    delMail_13(256);
    EXPECT_EQ(reports.take(), (Reports{"delFilter 9", "delFilter 9", "delMail_13 9"}));
    EXPECT_EQ(left(), Texts{u"ABC"});
    EXPECT_EQ(rows(u"tblFilter"), 1);
}

TEST_F(DeleteMailTest, AMissingDatabaseIsToldByEachRoutine)
{
    gDbPath += u".gone";
    keyOf(mail(u"a@x.jp", u"b@x.jp"));
    gFilterRule[0].TermsCode = 1;
    ReportList reports;
    reports.listen();
    delOneMail(0);
    delMail(0, u"a@x.jp");
    delMail_024(0, Statement{u"DELETE FROM tblTolvek"});
    delFilter(0);
    EXPECT_EQ(reports.take(), (Reports{"delOneMail 3024", "delMail 3024", "delMail_024 3024",
                                       "delMail_13 3024", "delFilter 3024"}));
}

TEST_F(DeleteMailTest, EachDeletionYieldsAndThatOfARuleAtEachMail)
{
    const Mail gone = mail(u"a@x.jp", u"b@x.jp", u"gone");
    store(gone);
    keyOf(gone);
    EXPECT_EQ(yieldsOf([] { delOneMail(0); }), 1);
    EXPECT_EQ(yieldsOf([] { delMail(0, u"a@x.jp"); }), 1);
    EXPECT_EQ(yieldsOf([] { delMail_024(0, Statement{u"DELETE FROM tblTolvek"}); }), 1);
    givenRule(3, u"a@");
    EXPECT_EQ(yieldsOf([] { delMail_13(0); }), 1);
    storeResults(3);
    EXPECT_EQ(yieldsOf([] { delMail_13(0); }), 1 + 3 + 3) << "counted, then deleted";
}

}
}
