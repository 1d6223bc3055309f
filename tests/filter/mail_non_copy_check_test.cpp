#include "filter/mail_non_copy_check.h"

#include "filter/filter_rules.h"
#include "support/msg_box_script.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

struct Values {
    Text SndName = u"花子";
    Text SndAdd = u"hanako@example.jp";
    Text RcvName = u"太郎";
    Text RcvAdd = u"taro@example.jp";
    Text Subject = u"Hello";
};

class MailNonCopyCheckTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        gNonCopyRule = {};
        gNonCopyRuleCnt = 0;
    }
    void TearDown() override { SetUp(); }

    static void givenRule(int terms, const Text& data)
    {
        gNonCopyRule[gNonCopyRuleCnt].TermsCode = terms;
        gNonCopyRule[gNonCopyRuleCnt].Data = data;
        ++gNonCopyRuleCnt;
    }
    static Int16 check(const Values& v)
    {
        return MailNonCopyCheck(v.SndName, v.SndAdd, v.RcvName, v.RcvAdd, v.Subject);
    }
    MsgBoxScript boxes;
};

TEST_F(MailNonCopyCheckTest, WithoutRulesEveryMailIsKept)
{
    gNonCopyRule[0].TermsCode = 1; // after the count
    EXPECT_EQ(check({}), 0);
}

struct Case {
    const char* story;
    int terms;
    Text data;
    Values mail;
    int result;
};

const Values kPlain;

Values withSubject(TextView subject)
{
    Values v;
    v.Subject = subject;
    return v;
}

Values withAddress(TextView address)
{
    Values v;
    v.SndAdd = address;
    return v;
}

TEST_F(MailNonCopyCheckTest, RulesMatchByTheirCode)
{
    const Case table[] = {
        {"0: the whole subject", 0, u"Hello", kPlain, 1},
        {"0: only the whole", 0, u"Hell", kPlain, 0},
        {"0: case counts", 0, u"abc", withSubject(u"ABC"), 0},
        {"0: width counts", 0, u"ＡＢＣ", withSubject(u"ABC"), 0},
        {"0: blanks count", 0, u"Hello ", kPlain, 0},
        {"1: contained", 1, u"ell", kPlain, 1},
        {"1: case counts", 1, u"net", withSubject(u"about NET"), 0},
        {"1: from the middle of a character", 1, u"\u6544", withSubject(u"\u4400\u0065"), 1},
        {"1: not contained", 1, u"bye", kPlain, 0},
        {"1: an empty condition is in any text", 1, u"", withSubject(u""), 1},
        {"2: the sender's address", 2, u"hanako@example.jp", kPlain, 1},
        {"2: the receiver's address", 2, u"taro@example.jp", kPlain, 1},
        {"2: case counts", 2, u"TARO@example.jp", kPlain, 0},
        {"2: only the whole", 2, u"taro", kPlain, 0},
        {"3: in the sender's address", 3, u"hanako", kPlain, 1},
        {"3: in the receiver's address", 3, u"taro@", kPlain, 1},
        {"3: case doesn't count", 3, u"net", withAddress(u"a@SOME.NET"), 1},
        {"3: width doesn't count", 3, u"ｎｅｔ", withAddress(u"a@some.net"), 1},
        {"3: not contained", 3, u"jiro", kPlain, 0},
        {"3: an empty condition is in any text", 3, u"", kPlain, 1},
        {"4: the sender's name", 4, u"花子", kPlain, 1},
        {"4: the receiver's name", 4, u"太郎", kPlain, 1},
        {"4: only the whole", 4, u"花", kPlain, 0},
        {"5: never", 5, u"花子", kPlain, 0},
        {"5: never, though contained", 5, u"花", kPlain, 0},
        {"an empty entry's code: never", 99, u"", kPlain, 0},
    };
    for (const Case& row : table) {
        SetUp();
        givenRule(row.terms, row.data);
        EXPECT_EQ(check(row.mail), row.result) << row.story;
    }
}

TEST_F(MailNonCopyCheckTest, AnyRuleOfTheTableMayMatch)
{
    givenRule(0, u"other");
    givenRule(5, u"花子");
    givenRule(4, u"太郎");
    EXPECT_EQ(check({}), 1);
}

TEST_F(MailNonCopyCheckTest, TheCheckEndsAtTheFirstMatch)
{
    for (int n = 0; n < 256; ++n)
        givenRule(0, u"Hello");
    gNonCopyRuleCnt = 257; // the last index would be outside the table
    EXPECT_EQ(check({}), 1);
}

TEST_F(MailNonCopyCheckTest, AFailureIsReportedAndTheMailIsKept)
{
    gNonCopyRuleCnt = 257;
    boxes.expect(u"エラー番号： 9\r（" + errorText(9) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (MailNonCopyCheck)");
    EXPECT_EQ(check({}), 0);
}

}
}
