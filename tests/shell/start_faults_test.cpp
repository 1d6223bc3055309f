// Wherever a start is cut off or fails, from the remains of an earlier run to the
// compaction, a later start finds the mails again.
#include "app/file_names.h"
#include "platform/runtime/test_hooks.h"
#include "shell/tolvek_main.h"
#include "store/db_compress.h"
#include "support/fault_injection.h"
#include "support/upgrade_fixture.h"

namespace tolvek::test {
namespace {

class StartFaultsTest : public UpgradeFixture {
protected:
    void SetUp() override
    {
        UpgradeFixture::SetUp();
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::No : MsgAnswer::Ok;
        });
        givenVersion("331");
    }
    void givenTwoGenerations()
    {
        store(mail(u"a@b.jp", u"c@d.jp", u"一通目"));
        dbCompress(gDbPath);
        store(mail(u"a@b.jp", u"c@d.jp", u"二通目", u"20000216"));
    }
    void start()
    {
        try {
            prepareDatabase(version(), [](TextView) {});
        } catch (const ProgramEnd&) { // ended where going on could lose mail
        }
    }
    static std::vector<Text> subjects(const Text& path)
    {
        return column(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, 0, path);
    }
    // Checks the result after one more, undisturbed start.
    void expectAtLast(const Text& path, const std::vector<Text>& expected, int operation)
    {
        start();
        ASSERT_TRUE(databaseExists(gDbPath)) << "operation " << operation;
        ASSERT_TRUE(databaseExists(path)) << "operation " << operation;
        EXPECT_EQ(subjects(path), expected) << "operation " << operation;
        EXPECT_FALSE(exists("Tolvek.Mdb.Upgrade")) << "operation " << operation;
    }
    void disturbAtEachOperation(const Text& path, const std::vector<Text>& expected,
                                const FaultFilter& counts = isOfTheStart)
    {
        KeptFolder kept(folder.path());
        kept.keep();
        const auto check = [&](int operation) {
            expectAtLast(path, expected, operation);
            kept.putBack();
        };
        endAtEachOperation([this] { start(); }, check, {}, counts, kSparse);
        failEachOperation([this] { start(); }, check, {}, counts, kSparse);
    }
    // The side files of compaction and creation have their own tests.
    static bool isOfTheStart(const Path& path)
    {
        const std::string name = path.filename().string();
        return name.find(toUtf8(kCreateSuffix)) == std::string::npos &&
               name.find(toUtf8(DBEngine::kUnfinishedSuffix)) == std::string::npos &&
               name.find(toUtf8(kWholeSuffix)) == std::string::npos;
    }
    // The previous generation, the names it is kept under, and the database itself.
    static bool isOfTheBak(const Path& path)
    {
        const std::string name = path.filename().string();
        return name == "Tolvek.Mdb" || name.find(toUtf8(kBakSuffix)) != std::string::npos ||
               name.find(toUtf8(kKeptSuffix)) != std::string::npos;
    }
    static std::vector<Text> both() { return {u"一通目", u"二通目"}; }
};

TEST_F(StartFaultsTest, AnArchiveThatIsThereIsNeverLost)
{
    givenTwoGenerations();
    disturbAtEachOperation(gDbPath, both());
}

TEST_F(StartFaultsTest, AWholeNewIsAtLastTheArchive)
{
    givenTwoGenerations();
    renameDatabase(gDbPath, gDbPath + u".New");
    disturbAtEachOperation(gDbPath, both());
}

TEST_F(StartFaultsTest, ABakWithoutADatabaseIsAtLastKeptAside)
{
    givenTwoGenerations();
    removeDatabase(gDbPath + u".Bak");
    renameDatabase(gDbPath, gDbPath + u".Bak");
    disturbAtEachOperation(gDbPath + u".Kept", both(), isOfTheBak);
}

// The same when the upgrade makes the new archive.
TEST_F(StartFaultsTest, ABakWithoutADatabaseIsKeptAsideFromAnUpgradeToo)
{
    givenTwoGenerations();
    givenVersion("210");
    removeDatabase(gDbPath + u".Bak");
    renameDatabase(gDbPath, gDbPath + u".Bak");
    KeptFolder kept(folder.path());
    kept.keep();
    endAtEachOperation([this] { start(); },
                       [&](int operation) {
                           givenVersion("331"); // as the end of a run writes it
                           expectAtLast(gDbPath + u".Kept", both(), operation);
                           kept.putBack();
                       },
                       {}, isOfTheBak);
}

// From the mark, the half-built new archive and the old one to an upgraded archive. The
// operations of the copying are covered by the store's tests.
TEST_F(StartFaultsTest, ACutOffUpgradeIsAtLastDone)
{
    givenOldArchive();
    storeOld(mail(u"hanako@example.jp", u"taro@example.jp", u"一通目"));
    renameDatabase(gDbPath, old());
    Table_Create();
    writeBytes(file("Tolvek.Mdb.Upgrade"), "");
    givenVersion("210");
    KeptFolder kept(folder.path());
    kept.keep();
    constexpr int kAsFarAsTheCompaction = 45;
    for (int operation = 0; operation < kAsFarAsTheCompaction; ++operation) {
        gotThrough(operation, [this] { start(); }, {});
        expectAtLast(gDbPath, {u"一通目"}, operation);
        EXPECT_EQ(subjects(old()), std::vector<Text>{u"一通目"});
        EXPECT_TRUE(isUpgraded(gDbPath));
        kept.putBack();
    }
}

}
}
