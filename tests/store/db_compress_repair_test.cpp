// What a start does with a file that can't be read as a database.
#include "app/file_names.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "support/archive_fixture.h"
#include "support/fault_injection.h"

#include <algorithm>

namespace tolvek::test {
namespace {

constexpr TextView kRepair = u"DBの読み込み中にエラーが発生しました。\r\n"
                             u"   BackUpファイルから修復しますか？";
constexpr TextView kAnew = u"DBの読み込み中にエラーが発生しました。\r\n"
                           u"   新しい DB を作りますか？";
constexpr TextView kBroken = u"DB が壊れています\r\n   修復が必要です。";

using Names = std::vector<std::string>;

class DbCompressRepairTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        store(mail(u"a@b.jp", u"c@d.jp", u"前の起動のとき"));
        dbCompress(gDbPath);
        store(mail(u"a@b.jp", u"c@d.jp", u"その後", u"20000216"));
    }
    Text previous() const { return sideFile(gDbPath, kBakSuffix); }

    // In the middle of the file, so that its header is still that of a database.
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
    // No row can be read any more.
    void ruin(const std::string& name) { writeBytes(file(name), std::string(5000, 'x')); }
    static std::vector<Text> ofTheBak() { return {u"前の起動のとき"}; }
    static std::vector<Text> ofBoth() { return {u"前の起動のとき", u"その後"}; }
    Names left() const
    {
        Names names = fileNames(folder.path());
        std::sort(names.begin(), names.end());
        return names;
    }
};

TEST_F(DbCompressRepairTest,
       OnYesTheDatabaseIsThatOfTheBakAndWhatCanStillBeReadAndTheBakHoldsTheSame)
{
    damage("Tolvek.Mdb");
    boxes.expect(kRepair, MsgAnswer::Yes, u"Tolvek");
    dbCompress(gDbPath);
    EXPECT_EQ(subjects(gDbPath), ofBoth());
    EXPECT_EQ(subjects(previous()), ofBoth());
}

TEST_F(DbCompressRepairTest, TheDamagedFileIsKept)
{
    ruin("Tolvek.Mdb");
    const std::string damaged = readBytes(file("Tolvek.Mdb"));
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged")), damaged);
    EXPECT_EQ(left(), (Names{"Tolvek.Mdb", "Tolvek.Mdb.Bak", "Tolvek.Mdb.Damaged"}));
}

TEST_F(DbCompressRepairTest, TheDamagedFileOfAnEarlierRepairIsNeverOverwritten)
{
    for (const std::string& content : {std::string(5000, 'x'), std::string(5000, 'y')}) {
        writeBytes(file("Tolvek.Mdb"), content);
        boxes.expect(kRepair, MsgAnswer::Yes);
        dbCompress(gDbPath);
    }
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged")), std::string(5000, 'x'));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged2")), std::string(5000, 'y'));
}

TEST_F(DbCompressRepairTest, TheLogThatBelongsToTheDamagedFileIsKeptWithIt)
{
    ruin("Tolvek.Mdb");
    writeBytes(file("Tolvek.Mdb-wal"), "commits");
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged-wal")), "commits");
    EXPECT_EQ(subjects(gDbPath), ofTheBak());
}

TEST_F(DbCompressRepairTest, CorrespondentsOfTheMailsThatCameBackAreListed)
{
    store(mail(u"new@b.jp", u"c@d.jp", u"新しい人", u"20000217"));
    damage("Tolvek.Mdb");
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(column(u"SELECT tblSearch_Addr_Data FROM tblSearch_Addresses"),
              (std::vector<Text>{u"a@b.jp", u"c@d.jp", u"new@b.jp"}));
}

TEST_F(DbCompressRepairTest, AFileThatIsNoDatabaseAtAllIsTheSame)
{
    writeBytes(file("Tolvek.Mdb"), std::string(5000, 'x'));
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(subjects(gDbPath), ofTheBak());
}

TEST_F(DbCompressRepairTest, AnEmptyFileIsNoEmptyArchive)
{
    writeBytes(file("Tolvek.Mdb"), "");
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(subjects(gDbPath), ofTheBak());
}

TEST_F(DbCompressRepairTest, OnNoTheProgramEndsWithTheFilesUntouched)
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

TEST_F(DbCompressRepairTest, WithoutABakOnYesThereIsAnEmptyBakAndNoDatabase)
{
    dropPrevious();
    damage("Tolvek.Mdb");
    const std::string damaged = readBytes(file("Tolvek.Mdb"));
    boxes.expect(kAnew, MsgAnswer::Yes, u"Tolvek");
    dbCompress(gDbPath);
    EXPECT_FALSE(databaseExists(gDbPath));
    EXPECT_EQ(rows(u"tblTolvek", previous()), 0);
    EXPECT_EQ(rows(u"tblFilterData", previous()), 0);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged")), damaged);
    EXPECT_EQ(left(), (Names{"Tolvek.Mdb.Bak", "Tolvek.Mdb.Damaged"}));
}

TEST_F(DbCompressRepairTest, WithoutABakAndWithoutSecondNamesItIsTheSame)
{
    dropPrevious();
    damage("Tolvek.Mdb");
    hooks::setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Link)
            throw std::system_error(std::make_error_code(std::errc::operation_not_permitted));
    });
    boxes.expect(kAnew, MsgAnswer::Yes);
    dbCompress(gDbPath);
    hooks::setFileProbe({});
    EXPECT_EQ(left(), (Names{"Tolvek.Mdb.Bak", "Tolvek.Mdb.Damaged"}));
}

TEST_F(DbCompressRepairTest, WithoutABakOnNoTheProgramEndsWithTheFileUntouched)
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

TEST_F(DbCompressRepairTest, AnIdleKeyPressThrowsNothingAway)
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

TEST_F(DbCompressRepairTest, WhatTwoDamagedFilesStillGiveIsTheDatabaseAndBothAreKept)
{
    damage("Tolvek.Mdb");
    damage("Tolvek.Mdb.Bak");
    const std::string bak = readBytes(file("Tolvek.Mdb.Bak"));
    boxes.expect(kRepair, MsgAnswer::Yes);
    dbCompress(gDbPath);
    EXPECT_EQ(subjects(gDbPath), ofBoth());
    EXPECT_EQ(subjects(previous()), ofBoth());
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged2")), bak);
    EXPECT_EQ(left().size(), 4u);
    dbCompress(gDbPath); // the next start asks nothing
}

TEST_F(DbCompressRepairTest, WhereNeitherGivesAnythingBothAreSetAsideForANewDatabase)
{
    ruin("Tolvek.Mdb");
    writeBytes(file("Tolvek.Mdb.Bak"), "no database");
    boxes.expect(kRepair, MsgAnswer::Yes, u"Tolvek");
    boxes.expect(kAnew, MsgAnswer::Yes, u"Tolvek");
    dbCompress(gDbPath);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged")), std::string(5000, 'x'));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Damaged2")), "no database");
    EXPECT_EQ(rows(u"tblTolvek", previous()), 0);
    EXPECT_EQ(left().size(), 3u);
}

TEST_F(DbCompressRepairTest, WhereNeitherGivesAnythingOnNoBothStayUntouched)
{
    ruin("Tolvek.Mdb");
    writeBytes(file("Tolvek.Mdb.Bak"), "no database");
    boxes.expect(kRepair, MsgAnswer::Yes);
    boxes.expect(kAnew, MsgAnswer::No);
    boxes.expect(kBroken);
    EXPECT_THROW(dbCompress(gDbPath), ProgramEnd);
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), std::string(5000, 'x'));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.Bak")), "no database");
    EXPECT_EQ(left().size(), 2u);
}

class DbCompressRepairFaultsTest : public DbCompressRepairTest {
protected:
    void SetUp() override
    {
        DbCompressRepairTest::SetUp();
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
    }
    // A compaction's operations on its side files have tests of their own.
    static bool isOfTheRepair(const Path& path)
    {
        return path.extension() != toUtf8(DBEngine::kUnfinishedSuffix);
    }
    KeptFolder kept{folder.path()};
};

TEST_F(DbCompressRepairFaultsTest, ARepairThatIsCutOffAnywhereIsTakenUpByTheNextStart)
{
    damage("Tolvek.Mdb");
    kept.keep();
    endAtEachOperation([] { dbCompress(gDbPath); },
                       [this](int operation) {
                           ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
                           dbCompress(gDbPath);
                           EXPECT_EQ(subjects(gDbPath), ofBoth()) << "operation " << operation;
                           EXPECT_EQ(subjects(previous()), ofBoth()) << operation;
                           EXPECT_TRUE(exists("Tolvek.Mdb.Damaged")) << operation;
                           EXPECT_FALSE(exists("Tolvek.Mdb.Damaged2")) << operation;
                           kept.putBack();
                       },
                       {}, isOfTheRepair, kSparse);
}

TEST_F(DbCompressRepairFaultsTest, AFailureInTheRepairLeavesTheBakOrARestoredDatabase)
{
    damage("Tolvek.Mdb");
    kept.keep();
    const auto repair = [] {
        try {
            dbCompress(gDbPath);
        } catch (const RuntimeError&) { // propagates to the caller by contract
        }
    };
    failEachOperation(
        repair,
        [this](int operation) {
            ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
            dbCompress(gDbPath);
            EXPECT_EQ(subjects(gDbPath), ofBoth()) << "operation " << operation;
            kept.putBack();
        },
        {}, isOfTheRepair, kSparse);
}

}
}
