#include "app/database.h"
#include "app/state.h"
#include "reply/send_mail.h"
#include "store/subject_keys.h"
#include "support/archive_fixture.h"
#include "support/sent_keys.h"
#include "window/frm_tolvek.h"

#include <QTimer>

#include <chrono>

namespace tolvek::test {
namespace {

// What is sent before the subject in every mail that gets so far.
const Sent kOpened{u"activate 77", u"%F", u"N"};

class SendMailTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gPostPetPid = 77;
    }
    void TearDown() override
    {
        gPostPetPid = 0;
        gSubjectKey1[0] = {};
        ArchiveFixture::TearDown();
    }
    // Stores the mail and lists it in the first row.
    static void given(const Mail& m)
    {
        store(m);
        gSubjectKey1[0] = {m.YMD,     m.HMS,    m.SubKey,  m.SndRcvFlag,
                           m.SndName, m.SndAdd, m.RcvName, m.RcvAdd};
    }
    void reply(int row = 0) { SendMail(form, row, u"not@used.jp", -1); }
    void write(const Text& address) { SendMail(form, -1, address, 0); }
    void expectSent(const Sent& rest)
    {
        Sent all = kOpened;
        all.insert(all.end(), rest.begin(), rest.end());
        EXPECT_EQ(sent.take(), all);
    }
    void expectNotReached(int number)
    {
        boxes.expect(u"%EEROR " + decimal(number) +
                         u" SendMail : PostPet 2001 が起動しているか,\r\n"
                         u"先ほど起動したPostPetが終了しています。\r\n\r\n"
                         u"もう一度,「送信キー」を押してください。",
                     MsgAnswer::Ok, u"Tolvek");
    }

    SentKeys sent;
    frmTolvek form;
};

TEST_F(SendMailTest, AReplyGoesToTheSenderWithItsSubjectAndThePaste)
{
    given(mail(u"hanako@example.jp", u"taro@example.jp", u"こんにちは"));
    reply();
    expectSent({u"hanako@example.jp{TAB}", u"Re: こんにちは{TAB}{TAB}", u"%E", u"J"});
    EXPECT_EQ(gPostPetPid, 77);
}

TEST_F(SendMailTest, SubjectsAreTypedLiterallyBehindOneMoreRe)
{
    const std::pair<Text, Text> subjects[] = {
        {u"", u"Re:"}, // the trailing blank is trimmed
        {u"　 ", u"Re:"},
        {u"  inner  blank ", u"Re: inner  blank"},
        {u"Re: again", u"Re: Re: again"},
        {u"+^%~(){}[]", u"Re: {+}{^}{%}{~}{(}{)}{{}{}}{[}]"},
        {u"100%{TAB}~", u"Re: 100{%}{{}TAB{}}{~}"},
        {u"ｶﾞ①㈱　＋％", u"Re: ｶﾞ①㈱　＋％"},
    };
    for (const auto& [subject, typed] : subjects) {
        execute(Statement{u"DELETE FROM tblTolvek"});
        given(mail(u"a@x.jp", u"b@x.jp", subject));
        reply();
        expectSent({u"a@x.jp{TAB}", typed + u"{TAB}{TAB}", u"%E", u"J"});
    }
}

TEST_F(SendMailTest, AReplyToOnesOwnMailGoesToOneself)
{
    Mail own = mail(u"taro@example.jp", u"hanako@example.jp", u"sent");
    own.SndRcvFlag = true;
    given(own);
    reply();
    expectSent({u"taro@example.jp{TAB}", u"Re: sent{TAB}{TAB}", u"%E", u"J"});
}

TEST_F(SendMailTest, ANewMailHasItsAddressAndNoSubject)
{
    gDbPath = joinPath(appPath(), u"none.Mdb"); // the archive isn't asked
    write(u"hanako@example.jp");
    expectSent({u"hanako@example.jp{TAB}", u"{TAB}{TAB}", u"%E", u"J"});
}

TEST_F(SendMailTest, TheAddressIsPartOfTheNotation)
{
    write(u"taro+momo@example.jp");
    expectSent({u"taro+momo@example.jp{TAB}", u"{TAB}{TAB}", u"%E", u"J"});
}

TEST_F(SendMailTest, TheInterfaceStaysAliveWhilePostPetOpensItsScreen)
{
    using Clock = std::chrono::steady_clock;
    Clock::time_point asked, filled;
    int ticks = 0, ticksAtAddress = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, [&] { ++ticks; });
    clock.start(1);
    sent.watch([&](const Text& step) {
        if (step == u"N") asked = Clock::now();
        if (!step.starts_with(u"a@x.jp")) return;
        filled = Clock::now();
        ticksAtAddress = ticks;
    });
    write(u"a@x.jp");
    EXPECT_GE(filled - asked, std::chrono::milliseconds(100));
    EXPECT_GT(ticksAtAddress, 0);
}

// Until the address is typed, no failure is worked around: later keys might go
// anywhere.
TEST_F(SendMailTest, AFailureUpToTheAddressIsToldAndEndsIt)
{
    const Sent steps{u"activate 77", u"%F", u"N", u"a@x.jp{TAB}"};
    for (std::size_t failing = 0; failing < steps.size(); ++failing) {
        SentKeys refusing;
        refusing.refuse(steps[failing]);
        gPostPetPid = 77;
        expectNotReached(5);
        write(u"a@x.jp");
        EXPECT_EQ(refusing.take(), Sent(steps.begin(), steps.begin() + static_cast<long>(failing)));
        EXPECT_EQ(gPostPetPid, 0);
        EXPECT_EQ(boxes.pending(), 0u);
    }
}

TEST_F(SendMailTest, AMailThatIsNotThereIsToldAndNothingIsTyped)
{
    given(mail(u"a@x.jp", u"b@x.jp", u"gone"));
    execute(Statement{u"DELETE FROM tblTolvek"});
    expectNotReached(3021);
    reply();
    expectNotReached(9); // no such row
    reply(-1);
    gDbPath = joinPath(appPath(), u"none.Mdb");
    expectNotReached(3024);
    reply();
    EXPECT_EQ(sent.take(), Sent{});
    EXPECT_EQ(gPostPetPid, 0);
}

TEST_F(SendMailTest, AQuoteInANameEndsItAndIsNeverSql)
{
    given(mail(u"a@x.jp", u"b@x.jp", u"kept"));
    gSubjectKey1[0].SndName = u"x' ); DROP TABLE tblTolvek; --";
    expectNotReached(3075);
    reply();
    EXPECT_EQ(sent.take(), Sent{});
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

TEST_F(SendMailTest, ARefusedSubjectStaysEmptyAndThePasteStillComes)
{
    given(mail(u"a@x.jp", u"b@x.jp", u"\u0001"));
    sent.refuse(u"Re: \u0001{TAB}{TAB}");
    reply();
    expectSent({u"a@x.jp{TAB}", u"{TAB}{TAB}", u"%E", u"J"});
    EXPECT_EQ(gPostPetPid, 77);
}

TEST_F(SendMailTest, AFailedMenuKeyIsPassedByTheSameTwoTabs)
{
    const std::pair<Text, Sent> failures[] = {
        {u"%E", {u"a@x.jp{TAB}", u"{TAB}{TAB}", u"{TAB}{TAB}", u"J"}},
        {u"J", {u"a@x.jp{TAB}", u"{TAB}{TAB}", u"%E", u"{TAB}{TAB}"}},
    };
    for (const auto& [refused, rest] : failures) {
        SentKeys refusing;
        refusing.refuse(refused);
        write(u"a@x.jp");
        Sent all = kOpened;
        all.insert(all.end(), rest.begin(), rest.end());
        EXPECT_EQ(refusing.take(), all);
    }
}

// PostPet ended halfway: nothing arrives any more, and tabbing past the failed step
// fails too.
TEST_F(SendMailTest, AFailureOfTheTwoTabsTooIsTheCallers)
{
    sent.watch([](const Text& step) {
        if (step == u"{TAB}{TAB}" || step == u"%E" || step == u"J") throw RuntimeError(5);
    });
    EXPECT_THROW(write(u"a@x.jp"), RuntimeError);
    expectSent({u"a@x.jp{TAB}"});
}

TEST_F(SendMailTest, TheEndOfTheProgramIsNoFailure)
{
    sent.watch([](const Text& step) {
        if (step == u"%E") throw ProgramEnd{0};
    });
    EXPECT_THROW(write(u"a@x.jp"), ProgramEnd);
    expectSent({u"a@x.jp{TAB}", u"{TAB}{TAB}"});
}

}
}
