// Wherever a start is cut off or fails, the mails must never be lost, and a later start
// must find them.
#include "platform/runtime/test_hooks.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/db_start.h"
#include "support/archive_fixture.h"
#include "support/fault_injection.h"

namespace tolvek::test {
namespace {

class FaultsTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        store(mail(u"a@b.jp", u"c@d.jp", u"一通目"));
        dbCompress(gDbPath); // so that there is a previous generation
        store(mail(u"a@b.jp", u"c@d.jp", u"二通目", u"20000216"));
    }

    // From here on putBack() restores the present state of the folder.
    void keep() { kept_.keep(); }
    void putBack() { kept_.putBack(); }

    static std::vector<Text> subjects(const Text& path)
    {
        return column(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, 0, path);
    }
    static const std::vector<Text>& bothMails()
    {
        static const std::vector<Text> both{u"一通目", u"二通目"};
        return both;
    }
    static void expectWhole(int operation)
    {
        restoreFromNew(gDbPath); // what a start does first
        ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        EXPECT_EQ(subjects(gDbPath), bothMails()) << "operation " << operation;
    }
    static void expectNextStart(int operation)
    {
        dbCompress(gDbPath);
        EXPECT_EQ(subjects(gDbPath), bothMails()) << "operation " << operation;
        EXPECT_EQ(subjects(gDbPath + u".Bak"), bothMails()) << "operation " << operation;
        EXPECT_FALSE(databaseExists(gDbPath + u".New")) << "operation " << operation;
    }

private:
    KeptFolder kept_{folder.path()};
};

struct Disk {
    const char* name;
    bool knowsSecondNames;
};

class DbCompressFaultsTest : public FaultsTest, public ::testing::WithParamInterface<Disk> {
protected:
    static void refuseLinks(FileOperation operation, const Path&)
    {
        if (operation == FileOperation::Link && !GetParam().knowsSecondNames)
            throw std::system_error(std::make_error_code(std::errc::operation_not_permitted));
    }
    static void compact() { dbCompress(gDbPath); }
    void check(int operation)
    {
        if (GetParam().knowsSecondNames) {
            EXPECT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        }
        expectWhole(operation);
        expectNextStart(operation);
        putBack();
    }
};

TEST_P(DbCompressFaultsTest, AnEndAtAnyMomentLosesNothing)
{
    keep();
    endAtEachOperation(
        compact, [this](int operation) { check(operation); }, refuseLinks);
}

TEST_P(DbCompressFaultsTest, AFailureOfAnyOperationLosesNothing)
{
    keep();
    failEachOperation(
        compact, [this](int operation) { check(operation); }, refuseLinks);
}

INSTANTIATE_TEST_SUITE_P(OnDisks, DbCompressFaultsTest,
                         ::testing::Values(Disk{"WithSecondNames", true},
                                           Disk{"WithoutSecondNames", false}),
                         [](const auto& disk) { return disk.param.name; });

class DbCompressFaultsStartTest : public FaultsTest {};

TEST_F(DbCompressFaultsStartTest, APuttingInPlaceThatIsCutOffIsTakenUpAgain)
{
    renameDatabase(gDbPath, gDbPath + u".New");
    keep();
    endAtEachOperation([] { restoreFromNew(gDbPath); },
                       [this](int operation) {
                           expectWhole(operation);
                           expectNextStart(operation);
                           putBack();
                       });
}

TEST_F(DbCompressFaultsStartTest, ACreationThatIsCutOffLeavesTheOldArchiveOrAWholeNewOne)
{
    keep();
    endAtEachOperation(Table_Create, [this](int operation) {
        ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        const std::vector<Text> found = subjects(gDbPath);
        EXPECT_TRUE(found == bothMails() || found.empty()) << "operation " << operation;
        EXPECT_GE(rows(u"tblFilterData"), 0);
        putBack();
    });
}

}
}
