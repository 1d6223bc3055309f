#include "app/database.h"
#include "app/settings.h"
#include "friend/friend_names.h"
#include "platform/dao/connection.h"
#include "platform/forms/input_box.h"
#include "platform/forms/test_hooks.h"
#include "store/database_files.h"
#include "store/subject_keys.h"
#include "support/report_list.h"
#include "support/window_fixture.h"
#include "support/yield_watch.h"

#include <optional>

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

const Text kKnownQuestion = u"メールアドレスがすでに登録されています。\r\n"
                            u"御友達の名前を変更しますか？\r\n\r\n"
                            u"おともだちの名前：花子\r\n"
                            u"おともだちのメールアドレス：hanako@x.jp";
const Text kNewQuestion = u"おともだち帳に登録して宜しいですか。\r\n\r\n"
                          u"おともだちの名前：花子\r\n"
                          u"おともだちのメールアドレス：hanako@x.jp";

// As the friend editor can leave a friend: a statement would refuse its quote.
void addFriendByHand(const Text& address, const Text& name, const Text& pet)
{
    Database opened = DBEngine::OpenDatabase(gDbPath);
    Recordset friends = opened.OpenRecordset(Statement{u"SELECT * FROM tblFriend"});
    friends.AddNew();
    int position = 0;
    for (const Text& text : {Text(), pet, name, address})
        friends.setField(position++, text);
    friends.setField(4, 0);
    friends.Update();
    opened.Close();
}

class FriendNamesTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gMyMailAddr = u"me@x.jp";
        gMyPetName.clear();
        reports.listen();
    }
    void TearDown() override
    {
        EXPECT_EQ(reports.take(), Reports{});
        EXPECT_FALSE(gDb.isOpen());
        gMyPetName.clear();
        ArchiveFixture::TearDown();
    }

    static void storeNamed(const Text& sender, const Text& address, const Text& HMS = u"101112",
                           const Text& receiver = u"other@x.jp")
    {
        Mail made = mail(address, receiver, u"件名", u"20000215", HMS);
        made.SndName = sender;
        store(made);
    }
    static Text senderName() { return value(u"SELECT tblTolvek_SndName FROM tblTolvek"); }
    static Text receiverName() { return value(u"SELECT tblTolvek_RcvName FROM tblTolvek"); }

    ReportList reports;
};

TEST_F(FriendNamesTest, TheBooksNameComesOverTheMailsOfBothDirections)
{
    addFriend(u"hanako@x.jp", u"はなちゃん", u"タマ");
    store(mail(u"hanako@x.jp", u"me@x.jp", u"in", u"20000215"));
    store(mail(u"me@x.jp", u"HANAKO@x.jp", u"out", u"20000216")); // case doesn't count
    store(mail(u"jiro@x.jp", u"me@x.jp", u"other", u"20000217"));
    edFriendName();
    EXPECT_EQ(column(u"SELECT tblTolvek_SndName FROM tblTolvek"),
              (Texts{u"はなちゃん", u"花子", u"花子"}));
    EXPECT_EQ(column(u"SELECT tblTolvek_RcvName FROM tblTolvek"),
              (Texts{u"太郎", u"はなちゃん", u"太郎"}));
}

TEST_F(FriendNamesTest, AFriendWithoutANameIsWrittenAsNotSet)
{
    addFriend(u"hanako@x.jp", u"　 ", u"タマ");
    store(mail(u"hanako@x.jp", u"hanako@x.jp"));
    edFriendName();
    EXPECT_EQ(senderName(), u"設定無し");
    EXPECT_EQ(receiverName(), u"設定無し");
}

TEST_F(FriendNamesTest, WhatThePetSignedStaysThePets)
{
    addFriend(u"hanako@x.jp", u"はなちゃん", u"タマ");
    storeNamed(u"タマ", u"hanako@x.jp", u"101112", u"hanako@x.jp");
    edFriendName();
    EXPECT_EQ(senderName(), u"タマ");
    EXPECT_EQ(receiverName(), u"はなちゃん") << "a receiver's name is always overwritten";
}

TEST_F(FriendNamesTest, AnEmptyPetNameProtectsNoMail)
{
    addFriend(u"hanako@x.jp", u"はなちゃん", u"");
    storeNamed(u"花子", u"hanako@x.jp", u"101112");
    storeNamed(u"タマ", u"hanako@x.jp", u"101113");
    edFriendName();
    EXPECT_EQ(column(u"SELECT tblTolvek_SndName FROM tblTolvek"),
              (Texts{u"はなちゃん", u"はなちゃん"}));
}

// The statement compares with the address plus a trailing blank.
TEST_F(FriendNamesTest, TheReceiversAddressIsFoundWithABlankBehindIt)
{
    addFriend(u"hanako@x.jp", u"はなちゃん", u"");
    store(mail(u"me@x.jp", u"hanako@x.jp"));
    edFriendName();
    EXPECT_EQ(receiverName(), u"はなちゃん");
}

TEST_F(FriendNamesTest, WhatTheUserSentToHimselfWasSentByHisPet)
{
    gMyPetName = u"もも";
    addFriend(u"me@x.jp", u"ぼく", u"ほか");
    store(mail(u"me@x.jp", u"me@x.jp"));
    store(mail(u"me@x.jp", u"jiro@x.jp", u"out", u"20000216"));
    edFriendName();
    EXPECT_EQ(column(u"SELECT tblTolvek_SndName FROM tblTolvek"), (Texts{u"もも", u"ぼく"}));
    EXPECT_EQ(column(u"SELECT tblTolvek_RcvName FROM tblTolvek"), (Texts{u"ぼく", u"太郎"}));
}

TEST_F(FriendNamesTest, WithoutAPetNameNothingIsThePets)
{
    gMyPetName = u"　 ";
    store(mail(u"me@x.jp", u"me@x.jp"));
    edFriendName();
    EXPECT_EQ(senderName(), u"花子");
}

TEST_F(FriendNamesTest, WhoHasLeftTheBookKeepsHisNames)
{
    addFriend(u"hanako@x.jp", u"はなちゃん", u"");
    store(mail(u"hanako@x.jp", u"me@x.jp"));
    edFriendName();
    execute(Statement{u"DELETE FROM tblFriend"});
    edFriendName();
    EXPECT_EQ(senderName(), u"はなちゃん");
}

// Friends are handled in the order of their names, each committed separately.
TEST_F(FriendNamesTest, AQuoteInAFriendsNameEndsItThereAndKeepsWhatWasDone)
{
    addFriend(u"a@x.jp", u"Aiko", u"");
    addFriendByHand(u"o@x.jp", u"O'Hara", u"");
    addFriend(u"z@x.jp", u"Zen", u"");
    for (const TextView who : {u"a", u"o", u"z"})
        store(mail(Text(who) + u"@x.jp", u"me@x.jp"));
    edFriendName();
    EXPECT_EQ(reports.take(), Reports{"edFriendName 3075"});
    EXPECT_EQ(column(u"SELECT tblTolvek_SndName FROM tblTolvek"),
              (Texts{u"Aiko", u"花子", u"花子"}));
}

TEST_F(FriendNamesTest, AQuoteInAPetsNameFailsToo)
{
    addFriendByHand(u"hanako@x.jp", u"はなちゃん", u"D'Artagnan");
    store(mail(u"hanako@x.jp", u"hanako@x.jp"));
    edFriendName();
    EXPECT_EQ(reports.take(), Reports{"edFriendName 3075"});
    EXPECT_EQ(senderName(), u"花子");
    EXPECT_EQ(receiverName(), u"太郎");
}

// Without the indexes, every friend would need a walk over all mails.
TEST_F(FriendNamesTest, MailsAreFoundByTheIndexesOfTheirAddresses)
{
    const struct {
        TextView where, index;
    } cases[] = {
        {u"tblTolvek_SndAdd = ? AND ( tblTolvek_SndName <> ? )", u"tblTolvek_BySndAdd"},
        {u"tblTolvek_RcvAdd = ? ", u"tblTolvek_ByRcvAdd"},
    };
    const auto archive = Connection::open(nativePath(gDbPath));
    for (const auto& each : cases) {
        const auto plan = archive->query(
            u"EXPLAIN QUERY PLAN UPDATE tblTolvek SET tblTolvek_SndName = ?, tblTolvek_RcvName = "
            u"? WHERE " +
            Text(each.where));
        ASSERT_TRUE(plan->step());
        EXPECT_NE(plan->text(3).find(u"USING INDEX " + Text(each.index)), Text::npos)
            << toUtf8(plan->text(3));
    }
}

TEST_F(FriendNamesTest, AMissingDatabaseIsReported)
{
    removeDatabase(gDbPath);
    edFriendName();
    EXPECT_EQ(reports.take(), Reports{"edFriendName 3024"});
}

class FriendNamesAddTest : public WindowFixture {
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        startSubjectKeys();
        hooks::setInputBox([this](const InputBoxRequest& request) {
            asked = request;
            return answer;
        });
    }
    void TearDown() override
    {
        hooks::setInputBox({});
        WindowFixture::TearDown();
    }

    void expectQuestion(const Text& question, MsgAnswer reply)
    {
        boxes.expect(question, reply, u"おともだち登録");
    }
    struct Person {
        Text name, address;
    };
    static void givenRow(const Person& sender, const Person& receiver, bool sent)
    {
        SubjectKey key;
        key.SndRcvFlag = sent;
        key.SndName = sender.name;
        key.SndAdd = sender.address;
        key.RcvName = receiver.name;
        key.RcvAdd = receiver.address;
        addSubjectKey(key);
    }
    static void givenReceived()
    {
        givenRow({u" 花子　", u"hanako@x.jp "}, {u"太郎", u"taro@x.jp"}, false);
    }
    static Texts book() { return column(u"SELECT tblFriend_Name FROM tblFriend"); }

    std::optional<InputBoxRequest> asked;
    Text answer = u"　はなちゃん ";
};

TEST_F(FriendNamesAddTest, AnUnknownSenderIsAddedUnderTheNameThatTheUserGives)
{
    givenReceived();
    expectQuestion(kNewQuestion, MsgAnswer::Yes);
    EXPECT_EQ(FriendNameAdd(form, 0), 0);
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->prompt, u"おともだちの名前を変えたい場合はここで変更できます。");
    EXPECT_EQ(asked->title, u"おともだちの名前変更");
    EXPECT_EQ(asked->defaultText, u"花子");
    EXPECT_EQ(book(), Texts{u"はなちゃん"});
    EXPECT_EQ(value(u"SELECT tblFriend_Address FROM tblFriend"), u"hanako@x.jp");
    EXPECT_EQ(value(u"SELECT tblFriend_PetKind FROM tblFriend"), u"");
    EXPECT_EQ(value(u"SELECT tblFriend_Pet FROM tblFriend"), u"");
    EXPECT_EQ(value(u"SELECT tblFriend_RecvMailCnt FROM tblFriend"), u"0");
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(FriendNamesAddTest, OfAMailThatTheUserSentTheReceiverIsTaken)
{
    givenRow({u"太郎", u"taro@x.jp"}, {u"花子", u"hanako@x.jp"}, true);
    expectQuestion(kNewQuestion, MsgAnswer::Yes);
    EXPECT_EQ(FriendNameAdd(form, 0), 0);
    EXPECT_EQ(value(u"SELECT tblFriend_Address FROM tblFriend"), u"hanako@x.jp");
}

TEST_F(FriendNamesAddTest, AKnownFriendIsRenamedAndKeepsTheRest)
{
    addFriend(u"hanako@x.jp", u"前の名前", u"タマ", u"ねこ", 7);
    givenReceived();
    expectQuestion(kKnownQuestion, MsgAnswer::Yes);
    EXPECT_EQ(FriendNameAdd(form, 0), 0);
    EXPECT_EQ(asked->defaultText, u"花子") << "the mail's name, not the book's";
    EXPECT_EQ(book(), Texts{u"はなちゃん"});
    EXPECT_EQ(value(u"SELECT tblFriend_Pet FROM tblFriend"), u"タマ");
    EXPECT_EQ(value(u"SELECT tblFriend_RecvMailCnt FROM tblFriend"), u"7");
}

TEST_F(FriendNamesAddTest, YesIsWhatEnterAnswers)
{
    givenReceived();
    for (const bool known : {false, true}) {
        if (known) addFriend(u"hanako@x.jp", u"前の名前", u"タマ");
        expectQuestion(known ? kKnownQuestion : kNewQuestion, MsgAnswer::No);
        EXPECT_EQ(FriendNameAdd(form, 0), 1);
        EXPECT_EQ(boxes.shown().back().defaultAnswer, MsgAnswer::Yes);
    }
}

TEST_F(FriendNamesAddTest, NoAndAnEmptyNameChangeNothing)
{
    givenReceived();
    for (const bool known : {false, true}) {
        if (known) addFriend(u"hanako@x.jp", u"前の名前", u"タマ");
        const Texts before = book();
        const Text& question = known ? kKnownQuestion : kNewQuestion;
        expectQuestion(question, MsgAnswer::No);
        EXPECT_EQ(FriendNameAdd(form, 0), 1);
        EXPECT_FALSE(asked) << "asked for a name after a No";
        for (const TextView name : {u"", u" 　"}) {
            answer = name;
            expectQuestion(question, MsgAnswer::Yes);
            EXPECT_EQ(FriendNameAdd(form, 0), 1);
        }
        EXPECT_EQ(book(), before);
        asked.reset();
    }
}

// When the user declines, the database stays open; the next routine opens it anew.
TEST_F(FriendNamesAddTest, AfterARefusalTheNextOneWorks)
{
    givenReceived();
    expectQuestion(kNewQuestion, MsgAnswer::No);
    EXPECT_EQ(FriendNameAdd(form, 0), 1);
    EXPECT_TRUE(gDb.isOpen());
    expectQuestion(kNewQuestion, MsgAnswer::Yes);
    EXPECT_EQ(FriendNameAdd(form, 0), 0);
    EXPECT_EQ(book().size(), 1u);
}

// A row beyond the first block keeps the flag that an earlier fill left: its own block
// never gets one.
TEST_F(FriendNamesAddTest, InALaterBlockTheFlagIsTheBlocksOwn)
{
    gSubjectKeyCnt1 = kSubjectBlock;
    givenRow({u"花子", u"hanako@x.jp"}, {u"次郎", u"jiro@x.jp"}, true);
    expectQuestion(kNewQuestion, MsgAnswer::Yes);
    EXPECT_EQ(FriendNameAdd(form, kSubjectBlock), 0);
    EXPECT_EQ(value(u"SELECT tblFriend_Address FROM tblFriend"), u"hanako@x.jp");
}

TEST_F(FriendNamesAddTest, WithoutASelectedRowItFailsUnderTheOtherRoutinesName)
{
    expectDbReport(u"edFriendName", 9);
    EXPECT_EQ(FriendNameAdd(form, -1), 0);
}

TEST_F(FriendNamesAddTest, FailuresAreReportedUnderTheOtherRoutinesName)
{
    givenReceived();
    const struct {
        Text answer;
        int error;
    } cases[] = {{u"O'Hara", 3075}, {Text(65, u'花'), 3163}};
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    for (const auto& each : cases)
        for (const bool known : {false, true}) {
            execute(Statement{u"DELETE FROM tblFriend"});
            if (known) addFriend(u"hanako@x.jp", u"前の名前", u"タマ");
            answer = each.answer;
            EXPECT_EQ(FriendNameAdd(form, 0), 0);
            EXPECT_EQ(reports.take(),
                      (Reports{"おともだち登録: " + toUtf8(known ? kKnownQuestion : kNewQuestion),
                               "edFriendName " + std::to_string(each.error)}));
            EXPECT_EQ(book(), known ? Texts{u"前の名前"} : Texts{});
            EXPECT_FALSE(gDb.isOpen());
        }
}

TEST_F(FriendNamesAddTest, AnEmptyAddressCantBeAdded)
{
    givenRow({u"花子", u""}, {u"太郎", u"taro@x.jp"}, false);
    expectQuestion(u"おともだち帳に登録して宜しいですか。\r\n\r\nおともだちの名前：花子\r\n"
                   u"おともだちのメールアドレス：",
                   MsgAnswer::Yes);
    expectDbReport(u"edFriendName", 3315, u"tblFriend_Address");
    EXPECT_EQ(FriendNameAdd(form, 0), 0);
    EXPECT_EQ(book(), Texts{});
}

TEST_F(FriendNamesAddTest, AMissingDatabaseIsReported)
{
    givenReceived();
    removeDatabase(gDbPath);
    expectDbReport(u"edFriendName", 3024, gDbPath);
    EXPECT_EQ(FriendNameAdd(form, 0), 0);
}

TEST_F(FriendNamesTest, EachFriendYields)
{
    EXPECT_EQ(yieldsOf(edFriendName), 0);
    addFriend(u"a@x.jp", u"花子", u"モモ");
    addFriend(u"b@x.jp", u"次郎", u"クロ");
    EXPECT_EQ(yieldsOf(edFriendName), 2);
}

}
}
