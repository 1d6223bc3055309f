// A complete round through the text files: an archive is restored as it was, and a load
// that is cut off anywhere costs no mail.
#include "app/database.h"
#include "app/settings.h"
#include "app/state.h"
#include "app/test_hooks.h"
#include "demo/sample_folder.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "import/mail_box_read.h"
#include "platform/runtime/test_hooks.h"
#include "shell/store_commands.h"
#include "shell/tolvek_main.h"
#include "store/database_files.h"
#include "store/search_tables.h"
#include "store/text_dump.h"
#include "store/text_dump_set.h"
#include "support/archive_fixture.h"
#include "support/fault_injection.h"

#include <set>

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

class DumpAndLoadTest : public ArchiveFixture {
protected:
    void TearDown() override
    {
        gFilterRule = {};
        gFilterRuleCnt = gNonCopyRuleCnt = 0;
        ArchiveFixture::TearDown();
    }
    static void answerAll()
    {
        hooks::setMsgBox([](const MsgBoxRequest& box) {
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
    }
    template <std::size_t N>
    static std::vector<Texts> table(const char16_t (&name)[N], int first, int fields)
    {
        Statement sql{u"SELECT * FROM "};
        sql << name;
        Database opened = DBEngine::OpenDatabase(gDbPath);
        std::vector<Texts> found;
        for (Recordset row = opened.OpenRecordset(sql); !row.Eof(); row.MoveNext()) {
            found.emplace_back();
            for (int at = first; at < fields; ++at)
                found.back().push_back(row.field(at).text());
        }
        opened.Close();
        return found;
    }
    static std::vector<Texts> sorted(std::vector<Texts> found)
    {
        std::sort(found.begin(), found.end());
        return found;
    }
    // All six tables, without the two columns that are renumbered.
    static std::vector<std::vector<Texts>> everything()
    {
        return {table(u"tblTolvek", 0, 26),        table(u"tblSearch_Addresses", 0, 1),
                table(u"tblSearch_Name", 0, 1),    table(u"tblFriend", 0, 5),
                sorted(table(u"tblFilter", 1, 5)), sorted(table(u"tblFilterData", 1, 11))};
    }
    void readSample()
    {
        hooks::setConverterLibrary({});
        const std::filesystem::path library = CONVERTER_LIBRARY;
        std::filesystem::copy_file(library, file(library.filename()));
        gPostPetDir = joinPath(appPath(), u"PostPet");
        sample::makeSampleFolder(nativePath(gPostPetDir));
        gMyMailAddr = u"hana@example.jp";
        gMyMailHandle = u"はな";
        gRecievMailReadOption = {};
        gSendMailReadOption = {};
        for (int element = 0; element <= 9; ++element)
            gRecievMailReadOption[element] = 1;
        for (int element = 0; element <= 3; ++element)
            gSendMailReadOption[element] = 1;
        fillMailBoxTable();
        fillMonthNames();
        const DBEngine::Session session;
        MailBoxRead();
        edSearch_Name();
        edSearch_Addr();
    }
};

TEST_F(DumpAndLoadTest, AFirstDaysArchiveComesBackAsItWas)
{
    readSample();
    addFriend(u"h@x.jp", u"花子", u"もも", u"くま", 12);
    addFilter(35, 3, 0, u"例", u"example");
    addFilter(7, 0, 1, u"読まない", u"広告");
    tblFilter_Get();
    tblFilterData_Sel();
    const auto before = everything();
    for (const std::vector<Texts>& rows : before)
        ASSERT_FALSE(rows.empty());
    answerAll();
    const DBEngine::Session session;
    dbUnLoad();
    std::vector<std::string> once;
    const std::set<std::string> names{"tblTolvek.Txt", "tblSearch_Addr.Txt", "tblSearch_Name.Txt",
                                      "tblFriend.Txt", "tblFilter.txt",      "tblFilterData.txt"};
    for (const std::string& name : names)
        once.push_back(readBytes(file(name)));
    Table_Create();
    ASSERT_EQ(rows(u"tblTolvek"), 0);
    dbLoad();
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(column(u"SELECT tblFilter_No FROM tblFilter"), (Texts{u"10", u"20"}));
    Text expected = u"0";
    for (const Text& id : column(u"SELECT tblFilterDt_Id FROM tblFilterData"))
        EXPECT_EQ(id, std::exchange(expected, decimal(std::stoi(toUtf8(id)) + 1)));
    dbUnLoad();
    std::size_t at = 0;
    for (const std::string& name : names)
        EXPECT_EQ(readBytes(file(name)), once[at++]) << name;
}

class DumpAndLoadFaultsTest : public DumpAndLoadTest {
protected:
    void SetUp() override
    {
        DumpAndLoadTest::SetUp();
        answerAll();
        store(mail(u"a@b.jp", u"c@d.jp", u"一通目"));
        addFriend(u"h@x.jp", u"花子", u"もも");
        addFilter(10, 0, 0, u"h", u"d");
        edSearch_Addr();
        dbUnLoad();
        dbLoad(); // so there is a copy of an earlier load
        store(mail(u"a@b.jp", u"c@d.jp", u"二通目", u"20000216"));
        kept_.keep();
    }
    static Texts subjects(const Text& database)
    {
        return column(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, 0, database);
    }
    // What must be true at every moment: both databases open, and one has all mails.
    void check(int operation)
    {
        const Texts both{u"一通目", u"二通目"};
        const Texts now = subjects(gDbPath), before = subjects(gDbPath + u".BeforeLoad");
        EXPECT_TRUE(now == both || before == both) << "operation " << operation;
        EXPECT_FALSE(before.empty()) << "operation " << operation;
        EXPECT_EQ(freeFile(), 1);
        kept_.putBack();
    }

    static void start()
    {
        prepareDatabase(u"331", [](TextView) {});
    }

    KeptFolder kept_{folder.path()};
};

TEST_F(DumpAndLoadFaultsTest, AnEndAtAnyMomentOfALoadLosesNoMail)
{
    endAtEachOperation(
        [] {
            const DBEngine::Session session;
            dbLoad();
        },
        [this](int operation) { check(operation); });
}

// A user who sees 1,040 of 5,006 mails would think that they are all.
TEST_F(DumpAndLoadFaultsTest, AfterAnEndAtAnyMomentTheNextStartShowsAWholeArchive)
{
    int takenBack = 0;
    endAtEachOperation(
        [] {
            const DBEngine::Session session;
            dbLoad();
        },
        [&](int operation) {
            start();
            const Texts now = subjects(gDbPath), before{u"一通目", u"二通目"};
            EXPECT_TRUE(now == before || now == Texts{u"一通目"}) << "operation " << operation;
            takenBack += now == before ? 1 : 0;
            EXPECT_FALSE(exists("Tolvek.Mdb.BeforeLoad.Running")) << "operation " << operation;
            kept_.putBack();
        },
        {},
        [](const Path& path) { // the engine's journals have their own tests
            return path.filename().string().find('-') == std::string::npos;
        });
    EXPECT_GT(takenBack, 10);
}

// The dump is unchanged, or complete and new. What a failed exchange left is repaired
// by the next load or unload.
TEST_F(DumpAndLoadFaultsTest, AFailureOfAnyOperationOfAnUnLoadLeavesOneSetOrTheOther)
{
    const std::string old = readBytes(file("tblTolvek.Txt"));
    int failed = 0, reported = 0;
    const auto report = [&](const MsgBoxRequest& box) {
        reported += box.icon == MsgIcon::Critical ? 1 : 0;
        return MsgAnswer::Ok;
    };
    failEachOperation(
        [&] {
            reported = 0;
            hooks::setMsgBox(report);
            EXPECT_NO_THROW(dbUnLoad());
        },
        [&](int operation) {
            settleTextFiles();
            const std::string now = readBytes(file("tblTolvek.Txt"));
            failed += now == old ? 1 : 0;
            EXPECT_TRUE(now != old || reported > 0) << "operation " << operation;
            EXPECT_FALSE(exists("tblTolvek.Txt.New")) << "operation " << operation;
            EXPECT_EQ(subjects(gDbPath), (Texts{u"一通目", u"二通目"}));
            kept_.putBack();
        });
    EXPECT_GT(failed, 10);
}

TEST_F(DumpAndLoadFaultsTest, AFailureOfAnyOperationOfALoadLosesNoMail)
{
    failEachOperation(
        [] {
            try {
                dbLoad();
            } catch (const RuntimeError&) { // reported by the command
            }
        },
        [this](int operation) { check(operation); });
}

}
}
