#include "jet_fixture.h"
#include "platform/dao/engine.h"
#include "platform/system/test_hooks.h"

namespace tolvek::test {
namespace {

// Sets the folder for temporary files during a test.
class TempVariable {
public:
    explicit TempVariable(const Path& folder)
    {
        if (const char* before = std::getenv("TMPDIR")) before_ = before;
        setenv("TMPDIR", folder.c_str(), 1);
    }
    ~TempVariable() { before_ ? setenv("TMPDIR", before_->c_str(), 1) : unsetenv("TMPDIR"); }
    TempVariable(const TempVariable&) = delete;
    TempVariable& operator=(const TempVariable&) = delete;

private:
    std::optional<std::string> before_;
};

class JetCopyTest : public JetTest {
protected:
    JetCopyTest() { given("current_jet4"); }

    static int mails(Database& database)
    {
        Recordset all = database.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
        all.MoveLast();
        return all.RecordCount();
    }
    // The number of conversions since the last call.
    int conversions() { return std::exchange(starts_, 0); }
    void countConversions()
    {
        hooks::setFileProbe([this](FileOperation, const Path& at) {
            if (at.filename() == Path(TOLVEK_JET_READER).filename()) ++starts_;
        });
    }
    int starts_ = 0;
};

TEST_F(JetCopyTest, AnOldBackupIsShownAndStaysAsItIs)
{
    Database database = DBEngine::OpenDatabase(path());
    EXPECT_EQ(mails(database), 56);
    database.Close();
    DBEngine::Abandon();
    EXPECT_TRUE(isUnchanged());
    EXPECT_EQ(files(), Names{"Old.Mdb"});
}

TEST_F(JetCopyTest, EveryFieldOfEveryRowIsShown)
{
    EXPECT_EQ(tablesOf(*Engine::instance().acquire(folder_ / "Old.Mdb")),
              expectedTables("current_jet4"));
}

TEST_F(JetCopyTest, ItBearsTheNameThatWasAskedFor)
{
    EXPECT_EQ(Engine::instance().acquire(folder_ / "Old.Mdb")->path(), folder_ / "Old.Mdb");
    std::filesystem::create_hard_link(folder_ / "Old.Mdb", folder_ / "Same.Mdb");
    EXPECT_EQ(Engine::instance().acquire(folder_ / "Same.Mdb")->path(), folder_ / "Same.Mdb");
    givenBytes(contents_.substr(0, 100000));
    EXPECT_EQ(errorTextOf([&] { DBEngine::OpenDatabase(path()); }), errorText(3343, path()));
}

TEST_F(JetCopyTest, ItIsShownFromAMediumThatCantBeWritten)
{
    using std::filesystem::perms;
    std::filesystem::permissions(folder_ / "Old.Mdb", perms::owner_read);
    std::filesystem::permissions(folder_.path(), perms::owner_read | perms::owner_exec);
    Database database = DBEngine::OpenDatabase(path());
    EXPECT_EQ(mails(database), 56);
    std::filesystem::permissions(folder_.path(), perms::owner_all);
}

TEST_F(JetCopyTest, WritingIsRefused)
{
    Database database = DBEngine::OpenDatabase(path());
    const auto write = [&] {
        database.Execute(Statement{u"DELETE FROM tblFriend"}, dbFailOnError);
    };
    EXPECT_EQ(errorOf(write), 3027);
    EXPECT_EQ(errorTextOf(write),
              u"更新できません。データベースまたはオブジェクトは読み取り専用です。");
    EXPECT_EQ(errorOf([&] { inTransaction(write); }), 3027);
    Recordset friends = database.OpenRecordset(Statement{u"SELECT * FROM tblFriend"});
    EXPECT_EQ(errorOf([&] {
                  friends.AddNew();
                  friends.setField(3, u"x");
                  friends.Update();
              }),
              3027);
    EXPECT_EQ(errorOf([&] { database.TableDefs().Append(TableDef(u"t")); }), 3027);
    database.Close();
    EXPECT_TRUE(isUnchanged());
}

TEST_F(JetCopyTest, TheOpeningsOfAViewCostOneConversion)
{
    countConversions();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(errorOfOpening(), 0);
    {
        const DBEngine::Session session;
        EXPECT_EQ(errorOfOpening(), 0);
        DBEngine::Rest();
        EXPECT_EQ(errorOfOpening(), 0);
    }
    EXPECT_EQ(conversions(), 1);
    Database database = DBEngine::OpenDatabase(path());
    EXPECT_EQ(mails(database), 56);
}

TEST_F(JetCopyTest, AFileThatChangedIsConvertedAnew)
{
    countConversions();
    Database before = DBEngine::OpenDatabase(path());
    given("v210_jet4");
    Database after = DBEngine::OpenDatabase(path());
    EXPECT_EQ(mails(before), 56);
    EXPECT_EQ(mails(after), 40);
    std::filesystem::last_write_time(
        folder_ / "Old.Mdb", std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_EQ(errorOfOpening(), 0);
    EXPECT_EQ(conversions(), 3);
}

TEST_F(JetCopyTest, AFileThatIsGoneIs3024)
{
    EXPECT_EQ(errorOfOpening(), 0);
    removeFile(folder_ / "Old.Mdb");
    EXPECT_EQ(errorOfOpening(), 3024);
}

TEST_F(JetCopyTest, AFileOfOurFormatInItsPlaceIsOpenedItself)
{
    EXPECT_EQ(errorOfOpening(), 0);
    EXPECT_EQ(errorOfCompacting(), 0);
    std::filesystem::rename(folder_ / "New.Mdb", folder_ / "Old.Mdb");
    Database database = DBEngine::OpenDatabase(path());
    EXPECT_EQ(mails(database), 56);
    database.Execute(Statement{u"DELETE FROM tblFriend"}, dbFailOnError);
}

// A folder only for the temporary files of this test.
TEST_F(JetCopyTest, NothingIsLeftAmongTheTemporaryFiles)
{
    const TempFolder temp;
    const TempVariable variable(temp.path());
    Database database = DBEngine::OpenDatabase(path());
    EXPECT_EQ(mails(database), 56);
    EXPECT_TRUE(std::filesystem::is_empty(temp.path())); // even while it is open
    givenBytes(contents_.substr(0, 100000));
    EXPECT_EQ(errorOfOpening(), 3343);
    EXPECT_TRUE(std::filesystem::is_empty(temp.path()));
    std::filesystem::remove(temp.path());
    given("current_jet4");
    EXPECT_EQ(errorOfOpening(), 75);
}

TEST_F(JetCopyTest, ADatabaseClosesWithItsEngine)
{
    Database database = DBEngine::OpenDatabase(path());
    DBEngine::Abandon();
    EXPECT_FALSE(database.isOpen());
}

}
}
