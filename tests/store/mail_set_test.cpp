#include "platform/system/test_hooks.h"
#include "store/mail_set.h"

#include "support/archive_fixture.h"

#include <system_error>

namespace tolvek::test {
namespace {

class MailSetTest : public ArchiveFixture {
protected:
    Text other() const { return joinPath(appPath(), u"Other.Mdb"); }
    void givenOther() { DBEngine::CompactDatabase(gDbPath, other()); }
};

TEST_F(MailSetTest, HoldsTheMailsOfItsOwnCopyAndOfAnEmptyOne)
{
    givenOther();
    EXPECT_TRUE(MailSet(gDbPath).holdsAllOf(other())) << "both empty";
    store(mail(u"a@b.jp", u"c@d.jp"));
    EXPECT_TRUE(MailSet(gDbPath).holdsAllOf(other()));
    EXPECT_FALSE(MailSet(other()).holdsAllOf(gDbPath));
}

TEST_F(MailSetTest, KnowsAMailByItsKeyItsSubjectAndItsText)
{
    Mail before = mail(u"a@b.jp", u"c@d.jp");
    store(before, gDbPath);
    givenOther();
    std::vector<Mail> changed(5, before);
    changed[0].HMS = u"101113";
    changed[1].SubKey = 1;
    changed[2].SndRcvFlag = true;
    changed[3].Subject = u"別の件名";
    changed[4].Mail1 = u"別の本文\r\n";
    for (const Mail& one : changed) {
        execute(Statement{u"DELETE FROM tblTolvek"});
        store(one);
        EXPECT_FALSE(MailSet(gDbPath).holdsAllOf(other()));
    }
}

TEST_F(MailSetTest, TakesNoNoticeOfTheNames)
{
    store(mail(u"a@b.jp", u"c@d.jp"));
    givenOther();
    execute(Statement{u"UPDATE tblTolvek SET tblTolvek_SndName = 'x', tblTolvek_RcvName = 'y'"});
    EXPECT_TRUE(MailSet(gDbPath).holdsAllOf(other()));
}

TEST_F(MailSetTest, HoldsNothingOfWhatItCantRead)
{
    writeBytes(file("Other.Mdb"), std::string(4096, 'x'));
    EXPECT_FALSE(MailSet(gDbPath).holdsAllOf(other()));
    EXPECT_FALSE(MailSet(other()).isReadable());
    EXPECT_FALSE(MailSet(other()).holdsAllOf(gDbPath));
}

// The caller would take a copy with all mails for one that holds none of them.
TEST_F(MailSetTest, AFailingDiskIsNoUnreadableDatabase)
{
    store(mail(u"a@b.jp", u"c@d.jp"));
    givenOther();
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Read && path.filename() == "Other.Mdb")
            throw std::system_error(EIO, std::generic_category());
    });
    EXPECT_THROW(MailSet{other()}, RuntimeError);
}

}
}
