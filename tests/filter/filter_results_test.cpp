#include "filter/filter_results.h"
#include "platform/system/test_hooks.h"

#include "filter_results_fixture.h"
#include "support/yield_watch.h"

#include <set>

namespace tolvek::test {
namespace {

// ---- what each code lists ----

TEST_F(FilterResultsTest, AWholeSubjectIsEqualByTheEngineAsItStandsAndInFullWidth)
{
    for (const TextView subject : {u"ABC", u"abc", u"ＡＢＣ", u"ABCD", u"ＡBC", u"xABC"})
        mailWith(Text(subject));
    addRule(0, u"ABC");
    run();
    EXPECT_EQ(listed(), (std::vector<int>{1, 2, 3}));
}

TEST_F(FilterResultsTest, APartOfASubjectIsFoundByItsBytesAsItStandsAndInFullWidth)
{
    for (const TextView subject :
         {u"xABCx", u"xabcx", u"xＡＢＣx", u"ＡBC", u"ｱｲ", u"アイ", u"あい"})
        mailWith(Text(subject));
    addRule(1, u"ABC");
    addRule(1, u"ｱｲ");
    run();
    EXPECT_EQ(listed(10), (std::vector<int>{1, 3}));
    EXPECT_EQ(listed(20), (std::vector<int>{5, 6}));
}

TEST_F(FilterResultsTest, APartOfASubjectMayBeginInTheMiddleOfACharacter)
{
    mailWith(u"\u4130B"); // 30 41 42 00
    mailWith(u"B\u4130");
    addRule(1, u"\u4241"); // 41 42
    run();
    EXPECT_EQ(listed(), std::vector<int>{1});
}

TEST_F(FilterResultsTest, AWholeAddressIsEqualByTheEngineOnEitherSide)
{
    mailWith(u"s", u"Net@x.jp", u"b@x.jp");
    mailWith(u"s", u"b@x.jp", u"net@x.jp");
    mailWith(u"s", u"net@x.jp.org", u"b@x.jp");
    mailWith(u"s", u"ｎｅｔ＠ｘ．ｊｐ", u"b@x.jp");
    addRule(2, u"net@x.jp");
    run();
    EXPECT_EQ(listed(), (std::vector<int>{1, 2}));
}

TEST_F(FilterResultsTest, APartOfAnAddressIsFoundWithoutRegardToCaseAndWidthOnEitherSide)
{
    mailWith(u"s", u"a@NET.jp", u"b@x.jp");
    mailWith(u"s", u"a@x.jp", u"b@ｎｅｔ.jp");
    mailWith(u"net", u"a@x.jp", u"b@x.jp");
    addRule(3, u"net");
    run();
    EXPECT_EQ(listed(), (std::vector<int>{1, 2}));
}

TEST_F(FilterResultsTest, AWholeNameIsEqualByTheEngineOnEitherSide)
{
    mailWith(u"s", u"a@x.jp", u"b@x.jp", u"taro", u"花子");
    mailWith(u"s", u"a@x.jp", u"b@x.jp", u"花子", u"TARO");
    mailWith(u"s", u"a@x.jp", u"b@x.jp", u"ｔａｒｏ", u"花子");
    mailWith(u"s", u"a@x.jp", u"b@x.jp", u"taro2", u"花子");
    addRule(4, u"taro");
    run();
    EXPECT_EQ(listed(), (std::vector<int>{1, 2}));
}

TEST_F(FilterResultsTest, APartOfANameIsFoundWithoutRegardToCaseWidthAndKanaOnEitherSide)
{
    mailWith(u"s", u"a@x.jp", u"b@x.jp", u"たろうくん", u"花子");
    mailWith(u"s", u"a@x.jp", u"b@x.jp", u"花子", u"ﾀﾛｳ");
    mailWith(u"s", u"a@x.jp", u"b@x.jp", u"ダロウ", u"花子");
    mailWith(u"タロウ", u"a@x.jp", u"b@x.jp", u"太郎", u"花子");
    addRule(5, u"タロウ");
    run();
    EXPECT_EQ(listed(), (std::vector<int>{1, 2}));
}

// Subject codes are case-sensitive; the address code isn't.
TEST_F(FilterResultsTest, ASubjectsCaseCountsWhereAnAddresssDoesNot)
{
    mailWith(u"NET", u"a@NET.jp");
    addRule(1, u"net");
    addRule(3, u"net");
    run();
    EXPECT_TRUE(listed(10).empty());
    EXPECT_EQ(listed(20), std::vector<int>{1});
}

TEST_F(FilterResultsTest, OnlyTheSubjectCodesLookForTheFullWidthFormAsWell)
{
    mailWith(u"s", u"ＮＥＴ＠ｘ", u"b@x.jp", u"ＮＥＴ", u"花子");
    for (const int code : {2, 4})
        addRule(code, code == 2 ? u"NET@x" : u"NET");
    run();
    EXPECT_EQ(rows(u"tblFilterData"), 0);
}

TEST_F(FilterResultsTest, ADoNotReadRuleListsNothing)
{
    mailWith(u"ABC");
    addRule(1, u"ABC", 1);
    run();
    EXPECT_EQ(rows(u"tblFilterData"), 0);
}

TEST_F(FilterResultsTest, AnUnknownCodeFindsNothingAndStillCountsTheMails)
{
    mailWith(u"ABC");
    mailWith(u"ABC");
    addRule(6, u"ABC");
    addRule(-1, u"ABC");
    run();
    EXPECT_EQ(rows(u"tblFilterData"), 0);
    EXPECT_EQ(gFilterDataId, 4);
}

// ---- what a row holds ----

TEST_F(FilterResultsTest, ARowIsACopyOfTheMailsHeading)
{
    Mail m = mail(u"a@x.jp", u"b@x.jp", u"件名", u"20010203", u"040506");
    m.SubKey = 7;
    m.SndRcvFlag = true;
    store(m);
    addRule(3, u"a@x");
    run();
    const Texts expected{u"0",      u"10",   u"20010203", u"040506", u"7",   u"花子",
                         u"a@x.jp", u"太郎", u"b@x.jp",   u"True",   u"件名"};
    for (int i = 0; i < static_cast<int>(expected.size()); ++i)
        EXPECT_EQ(column(Statement{u"SELECT * FROM tblFilterData"}, i),
                  Texts{expected[static_cast<std::size_t>(i)]});
}

TEST_F(FilterResultsTest, TheIdsRunOnAcrossRulesWithGapsWhereMailsWereOnlyLookedAt)
{
    for (const TextView subject :
         {u"x旅x", u"夏", u"旅", u"x", u"x", u"夏", u"x", u"x", u"x", u"旅x"})
        mailWith(Text(subject));
    addRule(1, u"旅");
    addRule(0, u"夏");
    run();
    EXPECT_EQ(ids(), (Texts{u"0", u"2", u"9", u"10", u"11"}));
    EXPECT_EQ(gFilterDataId, 12);
}

TEST_F(FilterResultsTest, AMailFromAnAddressToItselfIsListedOnce)
{
    mailWith(u"s", u"me@x.jp", u"me@x.jp");
    addRule(2, u"me@x.jp");
    addRule(3, u"me");
    run();
    EXPECT_EQ(listed(10), std::vector<int>{1});
    EXPECT_EQ(listed(20), std::vector<int>{1});
}

TEST_F(FilterResultsTest, ASubjectIsTrimmedWithABlankBehindItOrStandsAsItIs)
{
    mailWith(u" 　件 名 　");
    addRule(2, u"a@x.jp");
    addRule(3, u"a@x.jp");
    run();
    EXPECT_EQ(subjects(), (Texts{u"件 名 ", u" 　件 名 　"}));
}

// ---- the build as a whole ----

TEST_F(FilterResultsTest, WithoutASortingRuleTheTableEndsEmptyAndNothingIsTold)
{
    mailWith(u"ABC");
    addRule(1, u"ABC");
    run();
    gFilterRule[0].ActionCode = 1;
    setStatusLines(u"a", u"b", u"c", u"d", u"e", u"f");
    run();
    EXPECT_EQ(rows(u"tblFilterData"), 0);
    EXPECT_EQ(gFilterDataId, 0);
    EXPECT_EQ(gStatusLines[3], u"d");
    EXPECT_EQ(gStatusLines[4], u"e");
}

// Each opening of the file is used to look at the status text.
TEST_F(FilterResultsTest, EachRuleIsShownInTheProgressTextAlsoWithoutMails)
{
    addRule(0, u"a");
    addRule(1, u"b");
    addRule(5, u"c");
    addRule(0, u"d", 1);
    std::set<Text> shown;
    hooks::setFileProbe([&](FileOperation, const Path&) { shown.insert(gStatusLines[3]); });
    tblFilterData_Sel();
    hooks::setFileProbe({});
    EXPECT_EQ(shown, (std::set<Text>{u"", u"   1 / 3  のフィルターデータを",
                                     u"   2 / 3  のフィルターデータを",
                                     u"   3 / 3  のフィルターデータを"}));
    EXPECT_EQ(gStatusLines[4], u"     処理中です。");
    EXPECT_EQ(rows(u"tblFilterData"), 0);
}

TEST_F(FilterResultsTest, ABuildTakesThePlaceOfTheOneBefore)
{
    mailWith(u"ABC");
    addRule(0, u"ABC");
    run();
    run();
    EXPECT_EQ(ids(), Texts{u"0"});
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(FilterResultsTest, RulesThatWereReadFromTheStoreAreWorkedByNumber)
{
    mailWith(u"ABC");
    addFilter(30, 0, 0, u"三", u"ABC");
    addFilter(20, 1, 0, u"二", u"A");
    addFilter(10, 1, 1, u"一", u"B");
    tblFilter_Get();
    run();
    EXPECT_EQ(column(u"SELECT tblFilterDt_No FROM tblFilterData"), (Texts{u"20", u"30"}));
}

TEST_F(FilterResultsTest, EachRuleYieldsOnceAndTwiceAtEachMailItWalks)
{
    for (const Text& subject : Texts{u"A", u"B", u"C"})
        mailWith(subject);
    addRule(1, u"B");
    EXPECT_EQ(yieldsOf(run), 1 + 3 + 3) << "a search within texts walks all mails";
    gFilterRule[0].TermsCode = 0;
    EXPECT_EQ(yieldsOf(run), 1 + 1 + 1) << "the engine finds the one";
}

}
}
