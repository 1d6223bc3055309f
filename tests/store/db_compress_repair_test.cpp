// What a start does about a database that can't be read as one.
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/fault_injection.h"
#include "support/archive_fixture.h"

namespace tolvek::test {
namespace {

constexpr TextView kRepair = u"DBの読み込み中にエラーが発生しました。\r\n"
                             u"   BackUpファイルから修復しますか？";
constexpr TextView kAnew = u"DBの読み込み中にエラーが発生しました。\r\n"
                           u"   新しい DB を作りますか？";
constexpr TextView kBroken = u"DB が壊れています\r\n   修復が必要です。";

class RepairTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        store(mail(u"a@b.jp", u"c@d.jp", u"前の起動のとき"));
        dbCompress(gDbPath);
        store(mail(u"a@b.jp", u"c@d.jp", u"その後", u"20000216"));
    }
    Text previous() const { return gDbPath + u".Bak"; }

    // In the middle of the file: its head still reads as a database's.
    void damage(const std::string& name)
    {
        std::string bytes = readBytes(file(name));
        for (std::size_t i = bytes.size() / 2; i < bytes.size(); i += 7)
            bytes[i] = static_cast<char>(bytes[i] ^ 0x5a);
        writeBytes(file(name), bytes);
    }
    void dropPrevious() { removeDatabase(previous()); }
    static std::vector<Text> subjects(const Text& path)
    {
        return column(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, 0, path);
    }
    static std::vector<Text> ofTheBak() { return {u"前の起動のとき"}; }
};

TEST_F(RepairTest, OnYesTheDatabaseIsThatOfTheBakAndTheBakHoldsTheSame)
{
    damage("Tolvek.Mdb");
    boxes.expect(kRepair, MsgAnswer::Yes, u"Tolvek");
    dbCompress(gDbPath);
    EXPECT_EQ(subjects(gDbPath), ofTheBak());
    EXPECT_EQ(subjects(previous()), ofTheBak());
    EXPECT_EQ(fileNames(folder.path()).size(), 2u);
}

TEST_F(RepairTest, AFileThatIsNoDatabaseAtAllIsTheSame)
{
    writeBytes(file("Tolvek.Mdb"), std::string(5000, 'x'));
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(subjects(gDbPath), ofTheBak());
}

TEST_F(RepairTest, AnEmptyFileIsNoEmptyArchive)
{
    writeBytes(file("Tolvek.Mdb"), "");
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(subjects(gDbPath), ofTheBak());
}

TEST_F(RepairTest, OnNoTheProgramEndsWithTheFilesUntouched)
{
    damage("Tolvek.Mdb");
    const std::string live = readBytes(file("Tolvek.Mdb"));
    const std::string bak = readBytes(file("Tolvek.Mdb.Bak"));
    boxes.expect(kRepair, MsgAnswer::No);
    boxes.expect(kBroken, MsgAnswer::Ok, u"Tolvek");
    EXPECT_THROW(dbCompress(gDbPath), ProgramEnd);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), live);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), bak);
    EXPECT_EQ(fileNames(folder.path()).size(), 2u);
}

TEST_F(RepairTest, WithoutABakOnYesThereIsAnEmptyBakAndNoDatabase)
{
    dropPrevious();
    damage("Tolvek.Mdb");
    boxes.expect(kAnew, MsgAnswer::Yes, u"Tolvek");
    dbCompress(gDbPath);
    EXPECT_FALSE(databaseExists(gDbPath));
    EXPECT_EQ(rows(u"tblTolvek", previous()), 0);
    EXPECT_EQ(rows(u"tblFilterData", previous()), 0);
    EXPECT_EQ(fileNames(folder.path()), std::vector<std::string>{"Tolvek.Mdb.Bak"});
}

TEST_F(RepairTest, WithoutABakAndWithoutSecondNamesItIsTheSame)
{
    dropPrevious();
    damage("Tolvek.Mdb");
    setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Link)
            throw std::system_error(std::make_error_code(std::errc::operation_not_permitted));
    });
    boxes.expect(kAnew, MsgAnswer::Yes);
    dbCompress(gDbPath);
    setFileProbe({});
    EXPECT_EQ(fileNames(folder.path()), std::vector<std::string>{"Tolvek.Mdb.Bak"});
}

TEST_F(RepairTest, WithoutABakOnNoTheProgramEndsWithTheFileUntouched)
{
    dropPrevious();
    damage("Tolvek.Mdb");
    const std::string live = readBytes(file("Tolvek.Mdb"));
    boxes.expect(kAnew, MsgAnswer::No);
    boxes.expect(kBroken);
    EXPECT_THROW(dbCompress(gDbPath), ProgramEnd);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), live);
    EXPECT_EQ(fileNames(folder.path()).size(), 1u);
}

TEST_F(RepairTest, AnIdleKeyPressThrowsNothingAway)
{
    damage("Tolvek.Mdb");
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    dropPrevious();
    damage("Tolvek.Mdb");
    boxes.expect(kAnew, MsgAnswer::Yes);
    dbCompress(gDbPath);
    for (const MsgBoxRequest& box : boxes.shown())
        EXPECT_EQ(box.defaultAnswer, MsgAnswer::No);
}

TEST_F(RepairTest, ABakThatIsDamagedTooGoesToTheCallerAndBothFilesStay)
{
    damage("Tolvek.Mdb");
    damage("Tolvek.Mdb.Bak");
    const std::string live = readBytes(file("Tolvek.Mdb"));
    const std::string bak = readBytes(file("Tolvek.Mdb.Bak"));
    boxes.expect(kRepair, MsgAnswer::Yes);
    try {
        dbCompress(gDbPath);
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 3343);
    }
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), live);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), bak);
    EXPECT_EQ(fileNames(folder.path()).size(), 2u);
}

class RepairFaultsTest : public RepairTest {
protected:
    void SetUp() override
    {
        RepairTest::SetUp();
        setMsgBoxHandler([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
    }
    KeptFolder kept{folder.path()};
};

TEST_F(RepairFaultsTest, ARepairThatIsCutOffAnywhereIsTakenUpByTheNextStart)
{
    damage("Tolvek.Mdb");
    kept.keep();
    endAtEachOperation([] { dbCompress(gDbPath); },
                       [this](int operation) {
                           ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
                           dbCompress(gDbPath);
                           EXPECT_EQ(subjects(gDbPath), ofTheBak()) << "operation " << operation;
                           EXPECT_EQ(subjects(previous()), ofTheBak()) << operation;
                           kept.putBack();
                       });
}

TEST_F(RepairFaultsTest, AFailureInTheRepairLeavesTheBakOrARestoredDatabase)
{
    damage("Tolvek.Mdb");
    kept.keep();
    const auto repair = [] {
        try {
            dbCompress(gDbPath);
        } catch (const RuntimeError&) { // goes to the caller, as told
        }
    };
    failEachOperation(repair, [this](int operation) {
        ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        dbCompress(gDbPath);
        EXPECT_EQ(subjects(gDbPath), ofTheBak()) << "operation " << operation;
        kept.putBack();
    });
}

}
}
