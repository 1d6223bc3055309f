#include "import/mail_fields.h"
#include "import_fixture.h"
#include "platform/runtime/test_hooks.h"

namespace tolvek::test {
namespace {

constexpr Int16 kReceive = 0, kSend = -1, kFrom = -1, kTo = 0;

struct Correspondent {
    Text name, address;
    bool operator==(const Correspondent&) const = default;
};

void PrintTo(const Correspondent& who, std::ostream* out)
{
    *out << toUtf8(who.name) << " <" << toUtf8(who.address) << ">";
}

class EdAddresTest : public ImportTest {
protected:
    static Correspondent read(Int16 side, Int16 isFrom, const Text& line)
    {
        Correspondent who{u"old", u"old"};
        edAddres(side, isFrom, line, who.name, who.address);
        return who;
    }
    static Correspondent sender(const Text& value)
    {
        return read(kReceive, kFrom, u"From:" + value);
    }
};

TEST_F(EdAddresTest, TakesTheAddressFromEitherOrder)
{
    const Correspondent taro{u"山田太郎", u"taro@x.jp"};
    EXPECT_EQ(sender(u"山田太郎 <taro@x.jp>"), taro);
    EXPECT_EQ(sender(u"taro@x.jp (山田太郎)"), taro);
    EXPECT_EQ(sender(u"山田太郎<taro@x.jp>"), taro);
    EXPECT_EQ(read(kSend, kTo, u"To 山田太郎 <taro@x.jp>"), taro);
}

TEST_F(EdAddresTest, TakesOneWordForTheName)
{
    EXPECT_EQ(sender(u"pochi"), (Correspondent{u"pochi", u"設定無し"}));
    EXPECT_EQ(sender(u"taro@localhost"), (Correspondent{u"taro@localhost", u"設定無し"}));
    EXPECT_EQ(sender(u"taro.y"), (Correspondent{u"taro.y", u"設定無し"}));
}

TEST_F(EdAddresTest, SplitsAtTheFirstBracketOfEitherKind)
{
    EXPECT_EQ(sender(u"A (b) <c@x.jp>"), (Correspondent{u"A", u"b   c@x.jp"}));
    EXPECT_EQ(sender(u"a@x.jp <b> (c)"), (Correspondent{u"b   c", u"a@x.jp"}));
}

TEST_F(EdAddresTest, LooksForBracketsByCodeUnit)
{
    EXPECT_EQ(sender(u"太郎（taro@x.jp）"), (Correspondent{u"設定無し", u"太郎 taro@x.jp"}));
}

TEST_F(EdAddresTest, KnowsAFullWidthAddressToo)
{
    EXPECT_EQ(sender(u"ｔａｒｏ＠ｘ．ｊｐ (太郎)"),
              (Correspondent{u"太郎", u"ｔａｒｏ＠ｘ．ｊｐ"}));
}

TEST_F(EdAddresTest, TurnsAQuoteIntoABlank)
{
    EXPECT_EQ(sender(u"Taro's <taro@x.jp>"), (Correspondent{u"Taro s", u"taro@x.jp"}));
    EXPECT_EQ(sender(u"’太郎’ <taro@x.jp>"), (Correspondent{u"太郎", u"taro@x.jp"}));
}

TEST_F(EdAddresTest, LeavesALateQuoteBehindManyLeadingBlanks)
{
    EXPECT_EQ(sender(Text(10, u' ') + u"a’"), (Correspondent{u"a’", u"設定無し"}));
    EXPECT_EQ(sender(u"a’"), (Correspondent{u"a", u"設定無し"}));
}

TEST_F(EdAddresTest, TakesAReceivedMailWithoutAReceiverForTheUsersOwn)
{
    const Correspondent user{u"ぼく", u"me@home.jp"};
    EXPECT_EQ(read(kReceive, kTo, u"To"), user);
    EXPECT_EQ(read(kReceive, kTo, u"To  "), user);
    EXPECT_EQ(read(kReceive, kTo, u"To:  "), user);
    // If one half is missing, both are replaced.
    EXPECT_EQ(read(kReceive, kTo, u"To:hanako@x.jp"), user);
    EXPECT_EQ(read(kReceive, kTo, u"To:花子"), user);
    EXPECT_EQ(read(kReceive, kTo, u"To:花子 <hanako@x.jp>"),
              (Correspondent{u"花子", u"hanako@x.jp"}));
}

TEST_F(EdAddresTest, FillsAnUnknownAddressInTheOtherCases)
{
    const Correspondent nobody{u"設定無し", u"設定無し"};
    EXPECT_EQ(read(kSend, kTo, u"To"), nobody);
    EXPECT_EQ(read(kSend, kFrom, u"From"), nobody);
    EXPECT_EQ(read(kReceive, kFrom, u"From "), nobody);
    EXPECT_EQ(read(kReceive, kFrom, u"From:  "), nobody);
}

TEST_F(EdAddresTest, CallsTheUserByTheHandleWhateverTheLineSays)
{
    const Correspondent user{u"ぼく", u"me@home.jp"};
    EXPECT_EQ(sender(u"山田太郎 <me@home.jp>"), user);
    EXPECT_EQ(sender(u"me@home.jp"), user);
    EXPECT_EQ(sender(u"山田太郎 <ME@home.jp>"), (Correspondent{u"山田太郎", u"ME@home.jp"}));
}

TEST_F(EdAddresTest, LooksAMissingNameUpInTheFriendBook)
{
    addFriend(u"hanako@x.jp", u"花子", u"タマ");
    addFriend(u"jiro@x.jp", u"", u"ポチ");
    addFriend(u"saburo@x.jp", u"", u"");
    EXPECT_EQ(sender(u"hanako@x.jp"), (Correspondent{u"花子", u"hanako@x.jp"}));
    EXPECT_EQ(sender(u"<hanako@x.jp>"), (Correspondent{u"花子", u"hanako@x.jp"}));
    EXPECT_EQ(sender(u"jiro@x.jp"), (Correspondent{u"ポチ", u"jiro@x.jp"}));
    EXPECT_EQ(sender(u"saburo@x.jp"), (Correspondent{u"設定無し", u"saburo@x.jp"}));
    EXPECT_EQ(sender(u"nobody@x.jp"), (Correspondent{u"設定無し", u"nobody@x.jp"}));
    EXPECT_EQ(sender(u"花ちゃん <hanako@x.jp>"), (Correspondent{u"花ちゃん", u"hanako@x.jp"}));
}

TEST_F(EdAddresTest, LooksTheStandInForAnAddressUpToo)
{
    addFriend(u"設定無し", u"誰か", u"");
    const Correspondent somebody{u"誰か", u"設定無し"};
    EXPECT_EQ(read(kSend, kTo, u"To"), somebody);
    EXPECT_EQ(read(kReceive, kFrom, u"From"), somebody);
}

TEST_F(EdAddresTest, CutsToSixtyBehindTheLookUp)
{
    addFriend(u"hanako@x.jp", Text(64, u'花'), u"");
    EXPECT_EQ(sender(u"hanako@x.jp"), (Correspondent{Text(60, u'花'), u"hanako@x.jp"}));
    EXPECT_EQ(sender(Text(70, u'あ') + u" <a@x.jp>"), (Correspondent{Text(60, u'あ'), u"a@x.jp"}));
    const Text longAddress = Text(70, u'a') + u"@x.jp";
    EXPECT_EQ(sender(u"太郎 <" + longAddress + u">").address, Text(60, u'a'));
}

TEST_F(EdAddresTest, DoesNotTrimWhatTheCutLeaves)
{
    EXPECT_EQ(sender(Text(59, u'x') + u" yz <a@x.jp>").name, Text(59, u'x') + u" ");
}

TEST_F(EdAddresTest, GivesAnEmptyAddressTheHandleWhileTheUserHasNone)
{
    gMyMailAddr = u"";
    EXPECT_EQ(sender(u"pochi"), (Correspondent{u"ぼく", u"設定無し"}));
}

// A report that can't be shown fails itself; the normaliser then reports that failure
// under its own name.
TEST_F(EdAddresTest, ReportsUnderItsOwnNameAndReturnsWithWhatItHas)
{
    Reports reported;
    onDecode([] { throw RuntimeError(75); });
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        if (box.title.find(u"Mail_StrChange_Sub") != Text::npos) throw RuntimeError(7);
        reported.push_back(toUtf8(box.title));
        return MsgAnswer::Ok;
    });
    EXPECT_EQ(sender(u"taro@x.jp"), Correspondent{});
    Text subject = u"as it was";
    edSubject(u"Subject:hello", subject);
    EXPECT_EQ(subject, u"as it was");
    EXPECT_EQ(reported, (Reports{"エラーメッセージ (edAddres)", "エラーメッセージ (edSubject)"}));
}

}
}
