#include "friend/friend_names.h"

#include "store/database_files.h"
#include "support/archive_fixture.h"

namespace tolvek::test {
namespace {

class FriendNamesLookUpTest : public ArchiveFixture {
protected:
    static Text nameOf(const Text& address, const Text& before = u"")
    {
        Text name = before;
        setName(address, name);
        return name;
    }
};

TEST_F(FriendNamesLookUpTest, AKnownAddressGetsTheFriendsName)
{
    addFriend(u"hanako@example.jp", u"花子", u"モモ");
    EXPECT_EQ(nameOf(u"hanako@example.jp"), u"花子");
    EXPECT_EQ(nameOf(u"HANAKO@example.jp"), u"花子"); // case doesn't count in the store
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(FriendNamesLookUpTest, AFriendWithoutANameIsCalledByThePetsName)
{
    addFriend(u"hanako@example.jp", u"", u"モモ");
    EXPECT_EQ(nameOf(u"hanako@example.jp"), u"モモ");
}

TEST_F(FriendNamesLookUpTest, WithNeitherTheNameIsEmpty)
{
    addFriend(u"hanako@example.jp", u"", u"");
    EXPECT_EQ(nameOf(u"hanako@example.jp", u"before"), u"");
}

TEST_F(FriendNamesLookUpTest, AnUnknownAddressLeavesTheNameAsItWas)
{
    addFriend(u"hanako@example.jp", u"花子", u"モモ");
    EXPECT_EQ(nameOf(u"jiro@example.jp"), u"");
    EXPECT_EQ(nameOf(u"jiro@example.jp", u"before"), u"before");
}

TEST_F(FriendNamesLookUpTest, AnAddressWithASingleQuoteIsReportedAndNeverRun)
{
    boxes.expect(u"エラー番号： 3075\r\n（" +
                     errorText(3075, u"( tblFriend_Address = 'o'brien@example.jp' )") + u"）",
                 MsgAnswer::Ok, u"エラーメッセージ (setName)");
    EXPECT_EQ(nameOf(u"o'brien@example.jp", u"before"), u"before");
}

TEST_F(FriendNamesLookUpTest, AMissingDatabaseIsReported)
{
    removeDatabase(gDbPath);
    boxes.expect(u"エラー番号： 3024\r\n（" + errorText(3024, gDbPath) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (setName)");
    EXPECT_EQ(nameOf(u"a@b.jp", u"before"), u"before");
}

}
}
