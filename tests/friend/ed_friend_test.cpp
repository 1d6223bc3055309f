#include "app/test_hooks.h"
#include "friend/ed_friend.h"

#include "platform/runtime/codepage932.h"
#include "store/database_files.h"
#include "support/archive_fixture.h"
#include "support/report_list.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

class EdFriendTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gPostPetDir = u"/post";
        reports.listen();
    }
    void TearDown() override
    {
        EXPECT_EQ(reports.take(), Reports{});
        EXPECT_EQ(freeFile(), 1) << "a file number is still taken";
        EXPECT_FALSE(gDb.isOpen());
        gPostPetDir.clear();
        ArchiveFixture::TearDown();
    }

    static Text tmpPath() { return joinPath(appPath(), u"Friend.Tmp"); }
    void givenTmp(const Text& content) const { writeBytes(file("Friend.Tmp"), toAnsi(content)); }
    bool read(const Text& content)
    {
        givenTmp(content);
        return tmpFriend(tmpPath());
    }

    // Each friend as "kind,pet,name,address,count", ordered by address.
    static Texts book()
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Texts friends;
        for (Recordset row = opened.OpenRecordset(Statement{u"SELECT * FROM tblFriend"});
             !row.Eof(); row.MoveNext()) {
            friends.push_back(row.field(0).text());
            for (int field = 1; field < 5; ++field)
                friends.back() += u"," + row.field(field).text();
        }
        opened.Close();
        return friends;
    }

    ReportList reports;
};

TEST_F(EdFriendTest, TheLibraryWritesPostPetsBookAndItsFriendsAreAdded)
{
    Texts given;
    converterLibrary().TolvekFriend_Edit = [&](const Text& book, const Text& temp, Int16& count,
                                               Int16& second) {
        EXPECT_EQ(count, 0);
        given = {book, temp};
        givenTmp(u"\"4\",\"タマ\",\"花子\",\"hanako@x.jp\",12\r\n2,ピョン,次郎,jiro@x.jp,0\r\n");
        count = 2;
        second = 7; // ignored
    };
    edFriend();
    EXPECT_EQ(given, (Texts{joinPath(u"/post", u"おともだち帳"), tmpPath()}));
    EXPECT_EQ(book(), (Texts{u"ねこ,タマ,花子,hanako@x.jp,12", u"うさぎ,ピョン,次郎,jiro@x.jp,0"}));
}

TEST_F(EdFriendTest, WithACountOfZeroAnOldFileIsntRead)
{
    givenTmp(u"4,タマ,花子,hanako@x.jp,12\r\n");
    for (const int count : {0, -1}) {
        converterLibrary().TolvekFriend_Edit = [&](const Text&, const Text&, Int16& out, Int16&) {
            out = count;
        };
        edFriend();
        EXPECT_EQ(book(), Texts{});
    }
}

TEST_F(EdFriendTest, AMissingLibraryIsReported)
{
    hooks::setConverterLibrary({});
    edFriend();
    EXPECT_EQ(reports.take(), Reports{"edFriend 53"});
}

TEST_F(EdFriendTest, AFailureInsideTheLibraryIsReportedAndNothingIsRead)
{
    givenTmp(u"4,タマ,花子,hanako@x.jp,12\r\n");
    converterLibrary().TolvekFriend_Edit = [](const Text&, const Text&, Int16& count, Int16&) {
        count = 1;
        throw RuntimeError(75);
    };
    edFriend();
    EXPECT_EQ(reports.take(), Reports{"edFriend 75"});
    EXPECT_EQ(book(), Texts{});
}

// The failure belongs to tmpFriend alone.
TEST_F(EdFriendTest, AFailureWhileReadingIsReportedOnce)
{
    converterLibrary().TolvekFriend_Edit = [this](const Text&, const Text&, Int16& count, Int16&) {
        givenTmp(u"4,タマ,花子,,12\r\n");
        count = 1;
    };
    edFriend();
    EXPECT_EQ(reports.take(), Reports{"tmpFriend 3315"});
}

TEST_F(EdFriendTest, AFriendInTheTableStaysUntouched)
{
    addFriend(u"hanako@x.jp", u"はなちゃん", u"ミケ", u"くま", 3);
    EXPECT_TRUE(read(u"4,タマ,花子,HANAKO@x.jp,12\r\n"));
    EXPECT_EQ(book(), Texts{u"くま,ミケ,はなちゃん,hanako@x.jp,3"});
}

TEST_F(EdFriendTest, OfTheSameAddressTwiceTheFirstIsStored)
{
    EXPECT_TRUE(read(u"4,タマ,花子,hanako@x.jp,1\r\n2,ピョン,次郎,hanako@x.jp,2\r\n"));
    EXPECT_EQ(book(), Texts{u"ねこ,タマ,花子,hanako@x.jp,1"});
}

TEST_F(EdFriendTest, APetKindIsStoredInWordsAndAnUnknownOneEmpty)
{
    const struct {
        TextView code, kind;
    } cases[] = {{u"1", u"くま"}, {u"5", u""}, {u"9", u"いぬ"}, {u"", u""}, {u"くま", u""}};
    for (const auto& each : cases) {
        execute(Statement{u"DELETE FROM tblFriend"});
        EXPECT_TRUE(read(Text(each.code) + u",p,n,a@x.jp,0\r\n"));
        EXPECT_EQ(book(), Texts{Text(each.kind) + u",p,n,a@x.jp,0"});
    }
}

TEST_F(EdFriendTest, QuotesAndBarsInTheTwoNamesBecomeWideOnes)
{
    const struct {
        TextView written, stored;
    } cases[] = {
        {u"O'Hara \"Scarlett\" | Co", u"O’Hara ’Scarlett’ ｜ Co"},
        {u"'''", u"’’’"},
        {u"x||", u"x｜｜"},
        {u"x｜y", u"x｜y"}, // the search finds full-width bars too, and still ends
        {u"x＇＂｜'\"|y", u"x’’｜’’｜y"},
        {u"'", u"’"},
        {u"plain", u"plain"},
    };
    for (const auto& each : cases) {
        execute(Statement{u"DELETE FROM tblFriend"});
        EXPECT_TRUE(read(u"1," + Text(each.written) + u"," + Text(each.written) + u",a@x.jp,0"));
        EXPECT_EQ(book(),
                  Texts{u"くま," + Text(each.stored) + u"," + Text(each.stored) + u",a@x.jp,0"});
    }
}

TEST_F(EdFriendTest, TheTextsAreStoredTrimmed)
{
    EXPECT_TRUE(read(u"\"1\",\"　タマ　\",\" 花 子 \",\" a@x.jp　\",3\r\n"));
    EXPECT_EQ(book(), Texts{u"くま,タマ,花 子,a@x.jp,3"});
}

// The address is looked up as it is in the file and stored trimmed.
TEST_F(EdFriendTest, AKnownAddressWithABlankBeforeItIsntFoundAndFailsAsATwin)
{
    addFriend(u"a@x.jp", u"花子", u"");
    EXPECT_FALSE(read(u"1,p,n,\" a@x.jp\",3\r\n"));
    EXPECT_EQ(reports.take(), Reports{"tmpFriend 3022"});
    EXPECT_TRUE(read(u"1,p,n,\"a@x.jp \",3\r\n")); // trailing blanks don't count
    EXPECT_EQ(rows(u"tblFriend"), 1);
}

TEST_F(EdFriendTest, FieldsMayHoldCommasAndLineEndsInsideQuotes)
{
    EXPECT_TRUE(read(u"1,\"a, b\",\"c\r\nd\",\"a@x.jp\",3\r\n"));
    EXPECT_EQ(book(), Texts{u"くま,a, b,c\r\nd,a@x.jp,3"});
}

TEST_F(EdFriendTest, AnEmptyFileLeavesTheTableAsItIs)
{
    addFriend(u"hanako@x.jp", u"花子", u"タマ");
    EXPECT_TRUE(read(u""));
    EXPECT_EQ(rows(u"tblFriend"), 1);
}

TEST_F(EdFriendTest, WithoutAFileNothingHappens)
{
    EXPECT_FALSE(tmpFriend(tmpPath()));
    removeDatabase(gDbPath);
    EXPECT_FALSE(tmpFriend(tmpPath())) << "nor is the database looked for";
}

TEST_F(EdFriendTest, APathFromARecordIsTakenUpToItsNul)
{
    givenTmp(u"4,タマ,花子,hanako@x.jp,12\r\n");
    EXPECT_TRUE(tmpFriend(tmpPath() + u'\0' + blanks(100)));
    EXPECT_EQ(rows(u"tblFriend"), 1);
}

// The friends before the bad record stay; those after it aren't read.
TEST_F(EdFriendTest, ABadRecordEndsTheReading)
{
    const struct {
        TextView record;
        int error;
    } cases[] = {
        {u"1,p,n,,0", 3315},             // no address
        {u"1,p,n,o'brien@x.jp,0", 3075}, // nothing is replaced in an address
        {u"1,p,n,b@x.jp,32768", 6},      // a count beyond a Basic integer
    };
    for (const auto& each : cases) {
        execute(Statement{u"DELETE FROM tblFriend"});
        EXPECT_FALSE(read(u"1,p,n,a@x.jp,0\r\n" + Text(each.record) + u"\r\n1,p,n,c@x.jp,0\r\n"));
        EXPECT_EQ(reports.take(), Reports{"tmpFriend " + std::to_string(each.error)});
        EXPECT_EQ(book(), Texts{u"くま,p,n,a@x.jp,0"});
        EXPECT_EQ(freeFile(), 1);
    }
}

TEST_F(EdFriendTest, ANameBeyondItsFieldEndsTheReading)
{
    EXPECT_FALSE(read(u"1,p," + Text(65, u'花') + u",a@x.jp,0\r\n1,p,n,c@x.jp,0\r\n"));
    EXPECT_EQ(reports.take(), Reports{"tmpFriend 3163"});
    EXPECT_EQ(book(), Texts{});
}

TEST_F(EdFriendTest, ARecordThatIsCutOffEndsTheReading)
{
    EXPECT_FALSE(read(u"1,p,n,a@x.jp,0\r\n1,p,n\r\n"));
    EXPECT_EQ(reports.take(), Reports{"tmpFriend 62"});
    EXPECT_EQ(book(), Texts{u"くま,p,n,a@x.jp,0"});
}

TEST_F(EdFriendTest, AMissingDatabaseIsReportedAndTheFileIsFreeAgain)
{
    removeDatabase(gDbPath);
    EXPECT_FALSE(read(u"1,p,n,a@x.jp,0\r\n"));
    EXPECT_EQ(reports.take(), Reports{"tmpFriend 3024"});
}

// A quote would end a value; names from strangers are plain text all the same.
TEST_F(EdFriendTest, HostileNamesAreText)
{
    EXPECT_TRUE(read(u"1,x'); DROP TABLE tblFriend; --,%_*[!a]'||',a@x.jp,0\r\n"));
    EXPECT_EQ(book(), Texts{u"くま,x’); DROP TABLE tblFriend; --,%_*[!a]’｜｜’,a@x.jp,0"});
}

TEST_F(EdFriendTest, TheReadingYieldsOnceAndAtEachRecord)
{
    EXPECT_EQ(yieldsOf([&] { read(u""); }), 1);
    EXPECT_EQ(yieldsOf([&] { read(u"1,p,n,a@x.jp,0\r\n1,p,n,b@x.jp,0\r\n"); }), 1 + 2);
}

Text converted(Int16 toCode, const Text& source)
{
    Text result = u"before";
    edPetKind(toCode, source, result);
    return result;
}

TEST(EdFriendPetKindTest, EveryKindHasItsCode)
{
    const std::pair<Text, Text> table[] = {
        {u"1", u"くま"},     {u"2", u"うさぎ"},     {u"3", u"かめ"},     {u"4", u"ねこ"},
        {u"6", u"ロボット"}, {u"7", u"ハムスター"}, {u"8", u"ペンギン"}, {u"9", u"いぬ"},
    };
    for (const auto& [code, kind] : table) {
        EXPECT_EQ(converted(-1, kind), code);
        EXPECT_EQ(converted(0, code), kind);
    }
}

TEST(EdFriendPetKindTest, AnUnknownKindIsCodeZero)
{
    for (const TextView kind : {u"", u"きつね", u"クマ", u"くま "})
        EXPECT_EQ(converted(-1, Text(kind)), u"0");
}

TEST(EdFriendPetKindTest, AnUnknownCodeHasNoKind)
{
    for (const TextView code : {u"", u"0", u"5", u"10", u" 1", u"１"})
        EXPECT_EQ(converted(0, Text(code)), u"");
}

TEST(EdFriendPetKindTest, SourceAndResultMayBeOneText)
{
    Text text = u"ねこ";
    edPetKind(-1, text, text);
    EXPECT_EQ(text, u"4");
}

}
}
