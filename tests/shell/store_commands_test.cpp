#include "app/test_hooks.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "shell/store_commands.h"

#include "filter/filter_rules.h"
#include "store/before_load.h"
#include "store/database_files.h"
#include "store/search_tables.h"
#include "support/painted.h"
#include "support/report_list.h"
#include "support/window_fixture.h"
#include "support/yield_watch.h"

#include <algorithm>

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

const Text kExport = u"Ｔｏｌｖｅｋ　の　データを退避います。\r\n\r\n     よろしいでしょうか？";
const Text kImport = u"Ｔｏｌｖｅｋ　の　ＤＢ　へ　セーブデータからデータを挿入します。\r\n\r\n"
                     u"     よろしいでしょうか？";
const Text kRebuild = u"ＰｏａｔＰｅｔ　Ｍａｉｌ　ＤＢ　の　再作成を行います。\r\n\r\n"
                      u"     今までのデータは全て無くなります。\r\n\r\n     よろしいでしょうか？";
const Text kReplace = u"Fileは既に存在します。削除しますか？";
const Text kUnLoaded = u"メール履歴ＤＢのＵｎＬＯＡＤ（DB → TextFile）が終了しました。";
const Text kLoaded = u"メール履歴ＤＢのＬＯＡＤ（TextFile → DB）が終了しました。";
const Text kRebuilt = u"ＤＢの作成が正常終了しました。";

class StoreCommandsTest : public WindowFixture {
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        onEvent(form.memExport, &MenuEntry::Click, [this] { memExport_Click(form); });
        onEvent(form.memInport, &MenuEntry::Click, [this] { memInport_Click(form); });
        onEvent(form.memDBEdit, &MenuEntry::Click, [this] { memDBEdit_Click(form); });
        store(mail(u"hanako@x.jp", u"taro@x.jp", u"first", u"20000215"));
        store(mail(u"jiro@x.jp", u"taro@x.jp", u"second", u"20000216"));
        edSearch_Name();
        edSearch_Addr();
        gFilterRule = {};
        gFilterRuleCnt = gNonCopyRuleCnt = 0;
        watchFriendBook();
        fillPanes();
    }
    void TearDown() override
    {
        gDisplayType = 0;
        gFilterRule = {};
        gFilterRuleCnt = gNonCopyRuleCnt = 0;
        WindowFixture::TearDown();
    }

    void watchFriendBook()
    {
        ConverterLibrary library = givingBack();
        library.TolvekFriend_Edit = [this](const Text&, const Text&, Int16& count, Int16&) {
            count = 0;
            navigatorAtFriends = entries(*form.lstNameOrAddr);
            busyAtFriends.push_back(gBusyFlag);
        };
        hooks::setConverterLibrary(std::move(library));
    }
    void fillPanes()
    {
        form.lstNameOrAddr->Clear();
        form.lstNameOrAddr->setList(0, u"entry");
        form.lstSubject->Clear();
        form.lstSubject->setList(0, u"subject");
        form.txtMail->setText(u"text");
        form.lblHead->setCaption(u"head");
    }
    Texts panes()
    {
        return {decimal(form.lstNameOrAddr->ListCount()), decimal(form.lstSubject->ListCount()),
                form.txtMail->Text(), form.lblHead->Caption()};
    }
    static void pick(const MenuEntry* entry) { entry->action().trigger(); }
    void expectReady()
    {
        EXPECT_EQ(gBusyFlag, 0);
        for (int line = 0; line < 6; ++line)
            EXPECT_EQ(gStatusLines[line], u"");
        EXPECT_TRUE(form.memFile->Enabled());
        EXPECT_TRUE(form.comMailRead->Enabled());
        EXPECT_TRUE(form.comMailRead->HasFocus());
    }
    void expectAtWork(const Texts& lines)
    {
        EXPECT_EQ(gBusyFlag, -1);
        EXPECT_FALSE(form.comMailRead->Enabled());
        EXPECT_FALSE(form.memFile->Enabled());
        EXPECT_EQ(form.lblHead->Caption(), u"");
        Text shown;
        for (std::size_t line = 0; line < 6; ++line)
            shown += Text(kCrLf) + (line < lines.size() ? lines[line] : Text());
        EXPECT_EQ(form.txtMail->Text(), shown);
    }
    // Answers the question, and any further one with Yes.
    void expectQuestion(const Text& question, MsgAnswer answer)
    {
        boxes.expect(question, answer, u"Tolvek");
    }
    void expectAsked(const Text& question, MsgAnswer defaultAnswer)
    {
        const auto& shown = boxes.shown();
        const auto asked = std::find_if(shown.begin(), shown.end(),
                                        [&](const auto& box) { return box.text == question; });
        ASSERT_NE(asked, shown.end());
        EXPECT_EQ(asked->defaultAnswer, defaultAnswer);
    }
    void exportAll()
    {
        expectQuestion(kExport, MsgAnswer::Yes);
        boxes.expect(kUnLoaded, MsgAnswer::Ok, u"Tolvek");
        pick(form.memExport);
    }
    void importAll()
    {
        expectQuestion(kImport, MsgAnswer::Yes);
        boxes.expect(kLoaded, MsgAnswer::Ok, u"Tolvek");
        pick(form.memInport);
    }
    static Texts subjects(const Text& database = gDbPath)
    {
        return column(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, 0, database);
    }
    static Text beforeLoad() { return gDbPath + u".BeforeLoad"; }

    Texts navigatorAtFriends;
    std::vector<int> busyAtFriends;
};

TEST_F(StoreCommandsTest, ANoGivesTheFocusToTheReadButtonAndChangesNothing)
{
    const std::string archive = readBytes(file("Tolvek.Mdb"));
    const Texts before = panes();
    for (const auto& [entry, question] : {std::pair{form.memExport, &kExport},
                                          {form.memInport, &kImport},
                                          {form.memDBEdit, &kRebuild}}) {
        form.lstSubject->SetFocus();
        expectQuestion(*question, MsgAnswer::No);
        pick(entry);
        expectReady();
        EXPECT_EQ(panes(), before);
    }
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), archive);
    EXPECT_FALSE(exists("tblTolvek.Txt"));
    EXPECT_FALSE(databaseExists(beforeLoad()));
}

TEST_F(StoreCommandsTest, NoIsTheAnswerOfEnterWhereMailIsThrownAway)
{
    for (const auto& [entry, question, answer] :
         {std::tuple{form.memExport, &kExport, MsgAnswer::Yes},
          {form.memInport, &kImport, MsgAnswer::No},
          {form.memDBEdit, &kRebuild, MsgAnswer::No}}) {
        expectQuestion(*question, MsgAnswer::No);
        pick(entry);
        expectAsked(*question, answer);
    }
}

TEST_F(StoreCommandsTest, TheExportWritesSixFilesBehindItsStatusText)
{
    expectQuestion(kExport, MsgAnswer::Yes);
    boxes.expectAndLook(kUnLoaded, MsgAnswer::Ok, [&] {
        expectAtWork(
            {u"データベースの", u"　　内容を書き出しています", u"", u"　　　少々お待ちください。"});
        EXPECT_EQ(form.lstNameOrAddr->ListCount(), 1);
        EXPECT_EQ(form.lstSubject->ListCount(), 1);
    });
    pick(form.memExport);
    for (const char* name : {"tblTolvek.Txt", "tblSearch_Addr.Txt", "tblSearch_Name.Txt",
                             "tblFriend.Txt", "tblFilter.txt", "tblFilterData.txt"})
        EXPECT_TRUE(exists(name)) << name;
    EXPECT_EQ(panes(), (Texts{u"1", u"1", u"", u""}));
    EXPECT_TRUE(busyAtFriends.empty());
    expectReady();
}

// Before its first row, the import copies the whole archive without a yield.
TEST_F(StoreCommandsTest, TheStatusTextIsOnTheScreenWhenTheFirstFileIsTouched)
{
    std::vector<bool> inked;
    const auto watch = [&] {
        inked.clear();
        hooks::setFileProbe([&](FileOperation, const Path&) {
            if (gBusyFlag == -1 && inked.empty())
                inked.push_back(isInkedIn(gStatusColorFlag == 1 ? Qt::black : Qt::red,
                                          painted(*form.txtMail->viewport())));
        });
    };
    watch();
    exportAll();
    EXPECT_EQ(inked, std::vector<bool>{true});
    watch();
    importAll();
    EXPECT_EQ(inked, std::vector<bool>{true});
    watch();
    expectQuestion(kRebuild, MsgAnswer::Yes);
    boxes.expect(kReplace, MsgAnswer::Yes);
    boxes.expect(kRebuilt);
    pick(form.memDBEdit);
    EXPECT_EQ(inked, std::vector<bool>{true});
}

TEST_F(StoreCommandsTest, TheImportLoadsBehindItsStatusTextAndListsAnew)
{
    exportAll();
    store(mail(u"later@x.jp", u"taro@x.jp", u"later", u"20000301"));
    fillPanes();
    expectQuestion(kImport, MsgAnswer::Yes);
    boxes.expectAndLook(kLoaded, MsgAnswer::Ok, [&] {
        expectAtWork({u"書き出した内容をデータベースに", u"　　読み込んでします。", u"",
                      u"　　　少々お待ちください。"});
        EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
        EXPECT_EQ(form.lstSubject->ListCount(), 0);
        EXPECT_TRUE(busyAtFriends.empty());
    });
    pick(form.memInport);
    EXPECT_EQ(subjects(), (Texts{u"first", u"second"}));
    EXPECT_EQ(busyAtFriends, std::vector<int>{-1}) << "read while the status text is shown";
    EXPECT_EQ(navigatorAtFriends, entries(*form.lstNameOrAddr));
    EXPECT_EQ(panes(), (Texts{u"3", u"0", u"", u""}));
    expectReady();
}

TEST_F(StoreCommandsTest, TheImportRefillsTheNavigatorByTheDisplayType)
{
    addFilter(10, 1, 0, u"見出し", u"first");
    exportAll();
    struct Case {
        int type;
        Text label;
        Texts listed;
    };
    const Case cases[] = {
        {0, u"アドレス　表示", {u"hanako@x.jp", u"jiro@x.jp", u"taro@x.jp"}},
        {1, u"送受信者名　表示", {u"太郎", u"花子"}},
        {2, u"日付　表示", {u"20000216", u"20000215"}},
        {3, u"フィルター　表示", {u"見出し"}},
        {9, u"フィルター　表示", {u"見出し"}},
        {-1, u"フィルター　表示", {u"見出し"}},
    };
    for (const Case& c : cases) {
        gDisplayType = c.type;
        form.lblNameOrAddr->setCaption(u"");
        importAll();
        EXPECT_EQ(form.lblNameOrAddr->Caption(), c.label);
        EXPECT_EQ(entries(*form.lstNameOrAddr), c.listed) << c.type;
    }
}

TEST_F(StoreCommandsTest, AMissingFileLeavesItsTableAndTheOthersAreLoaded)
{
    addFriend(u"h@x.jp", u"花子", u"もも");
    exportAll();
    removeFile(file("tblFriend.Txt"));
    execute(Statement{u"DELETE FROM tblTolvek"});
    addFriend(u"j@x.jp", u"次郎", u"はち");
    importAll();
    EXPECT_EQ(rows(u"tblFriend"), 2);
    EXPECT_EQ(subjects(), (Texts{u"first", u"second"}));
}

TEST_F(StoreCommandsTest, TheEndIsToldThoughTablesFailed)
{
    exportAll();
    addFilter(10, 0, 0, u"h", u"d");
    writeBytes(file("tblSearch_Name.Txt"), "\"n\"\r\n\"N\"\r\n");
    std::filesystem::permissions(file("tblFilter.txt"), std::filesystem::perms::owner_read);
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    pick(form.memInport);
    EXPECT_EQ(reports.take(), (Reports{"Tolvek: " + toUtf8(kImport), "tblSearch_Name_Load 3022",
                                       "Tolvek: " + toUtf8(kLoaded)}));
    pick(form.memExport);
    EXPECT_EQ(reports.take(), (Reports{"Tolvek: " + toUtf8(kExport), "tblFilter_UnLoad 75",
                                       "Tolvek: " + toUtf8(kUnLoaded)}));
    EXPECT_EQ(rows(u"tblSearch_Name"), 1);
    expectReady();
}

TEST_F(StoreCommandsTest, TheArchiveBeforeTheLoadIsKeptBesideIt)
{
    exportAll();
    store(mail(u"later@x.jp", u"taro@x.jp", u"later", u"20000301"));
    importAll();
    EXPECT_EQ(subjects(beforeLoad()), (Texts{u"first", u"second", u"later"}));
    importAll();
    EXPECT_EQ(subjects(beforeLoad()), (Texts{u"first", u"second"}));
    EXPECT_FALSE(databaseExists(beforeLoad() + u".New"));
}

// Each quotation mark shifts the items after it, so the load ends early.
TEST_F(StoreCommandsTest, ImportingADumpWithQuotationMarksTwiceLeavesTheFirstArchiveBesideIt)
{
    execute(Statement{u"UPDATE tblTolvek SET tblTolvek_Mail1 = 'say \"x\"'"});
    exportAll();
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    for (int n = 0; n < 2; ++n) {
        pick(form.memInport);
        EXPECT_EQ(reports.take().size(), 3u) << "question, report, end";
        EXPECT_NE(subjects(), (Texts{u"first", u"second"}));
    }
    EXPECT_EQ(subjects(beforeLoad()), (Texts{u"first", u"second"}));
    EXPECT_EQ(subjects(beforeLoad() + u"2"), subjects());
}

TEST_F(StoreCommandsTest, AnArchiveOutlivesTwoLoadsOfEmptyFiles)
{
    writeBytes(file("tblTolvek.Txt"), "");
    importAll();
    importAll();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(subjects(beforeLoad() + u"2"), (Texts{u"first", u"second"}));
}

TEST_F(StoreCommandsTest, AnImportThatIsClosedInTheMiddleIsTakenBackByTheNextStart)
{
    exportAll();
    expectQuestion(kImport, MsgAnswer::Yes);
    hooks::setFileProbe([&, seen = 0](FileOperation operation, const Path& path) mutable {
        if (operation == FileOperation::Open && path.filename() == "tblSearch_Name.Txt" &&
            ++seen == 1)
            endProgram();
    });
    EXPECT_THROW(memInport_Click(form), ProgramEnd);
    hooks::setFileProbe({});
    execute(Statement{u"DELETE FROM tblTolvek WHERE (tblTolvek_YMD = '20000216')"});
    undoCutOffLoads(appPath());
    EXPECT_EQ(subjects(), (Texts{u"first", u"second"}));
}

TEST_F(StoreCommandsTest, AFailedExportLeavesTheLastDumpAndNothingBesideIt)
{
    exportAll();
    const std::string dump = readBytes(file("tblTolvek.Txt"));
    store(mail(u"later@x.jp", u"taro@x.jp", u"later", u"20000301"));
    for (const char* failing : {"tblTolvek.Txt.New", "tblFilterData.txt.New"}) {
        hooks::setFileProbe([&](FileOperation operation, const Path& path) {
            if (operation == FileOperation::Flush && path.filename() == failing)
                throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
        });
        ReportList reports;
        reports.listen(MsgAnswer::Yes);
        pick(form.memExport);
        hooks::setFileProbe({});
        EXPECT_EQ(reports.take().size(), 3u) << "question, report, end";
        EXPECT_EQ(readBytes(file("tblTolvek.Txt")), dump);
        EXPECT_FALSE(exists("tblTolvek.Txt.New"));
        EXPECT_FALSE(exists("tblFilter.txt.New"));
    }
}

TEST_F(StoreCommandsTest, AnExchangeThatFailsIsReportedUnderTheCommandAndTheEndAllTheSame)
{
    exportAll();
    store(mail(u"later@x.jp", u"taro@x.jp", u"later", u"20000301"));
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Replace && path.filename() == "tblFriend.Txt")
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    pick(form.memExport);
    hooks::setFileProbe({});
    EXPECT_EQ(reports.take(), (Reports{"Tolvek: " + toUtf8(kExport), "memExport_Click 57",
                                       "Tolvek: " + toUtf8(kUnLoaded)}));
    execute(Statement{u"DELETE FROM tblTolvek"});
    pick(form.memInport); // completes the exchange first
    reports.take();
    EXPECT_EQ(rows(u"tblTolvek"), 3);
    EXPECT_FALSE(exists("tblTolvek.Txt.Whole"));
}

TEST_F(StoreCommandsTest, NothingIsKeptWhenNothingCanBeLoadedOrThereIsNothingToKeep)
{
    importAll();
    EXPECT_FALSE(databaseExists(beforeLoad())) << "no text file";
    writeBytes(file("tblFilterData.txt"), "");
    removeDatabase(gDbPath);
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    pick(form.memInport);
    EXPECT_FALSE(databaseExists(beforeLoad())) << "no archive";
    EXPECT_TRUE(databaseExists(gDbPath));
}

TEST_F(StoreCommandsTest, WithoutACopyNothingIsLoaded)
{
    exportAll();
    store(mail(u"later@x.jp", u"taro@x.jp", u"later", u"20000301"));
    writeBytes(file("Tolvek.Mdb.BeforeLoad"), "of an earlier load");
    writeBytes(file("Tolvek.Mdb.BeforeLoad.New"), "of a load that was cut off");
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Replace &&
            path.filename().string().starts_with("Tolvek.Mdb.BeforeLoad"))
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    expectQuestion(kImport, MsgAnswer::Yes);
    boxes.expect(u"エラー番号： 61\r（" + errorText(61) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (memInport_Click)");
    pick(form.memInport);
    hooks::setFileProbe({});
    EXPECT_EQ(subjects(), (Texts{u"first", u"second", u"later"}));
    EXPECT_EQ(readBytes(file("Tolvek.Mdb.BeforeLoad")), "of an earlier load");
    EXPECT_EQ(entries(*form.lstNameOrAddr).size(), 3U) << "the command goes on";
    expectReady();
    importAll(); // the remains don't block it
    EXPECT_EQ(subjects(beforeLoad()), (Texts{u"first", u"second", u"later"}));
}

TEST_F(StoreCommandsTest, TheRebuildEmptiesTheArchiveAfterTwoQuestions)
{
    addFilter(10, 0, 1, u"h", u"d");
    tblFilter_Get();
    expectQuestion(kRebuild, MsgAnswer::Yes);
    boxes.expectAndLook(kReplace, MsgAnswer::Yes, [&] {
        expectAtWork({u"データベースを作り直しています。", u"", u"　　　少々お待ちください。"});
        EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
        EXPECT_EQ(form.lstSubject->ListCount(), 0);
    });
    boxes.expectAndLook(kRebuilt, MsgAnswer::Ok, [&] {
        EXPECT_EQ(gBusyFlag, 0);
        EXPECT_EQ(form.txtMail->Text(), u"");
        EXPECT_TRUE(form.comMailRead->Enabled());
    });
    pick(form.memDBEdit);
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(rows(u"tblFilter"), 0);
    EXPECT_EQ(gFilterRuleCnt, 1) << "the rules in memory stay";
    EXPECT_EQ(gFilterRule[0].Header, u"h");
    EXPECT_EQ(gNonCopyRuleCnt, 1);
    EXPECT_EQ(panes(), (Texts{u"0", u"0", u"", u""}));
    expectReady();
}

TEST_F(StoreCommandsTest, ARefusedReplacementKeepsTheArchiveAndTellsSuccessAllTheSame)
{
    expectQuestion(kRebuild, MsgAnswer::Yes);
    boxes.expect(kReplace, MsgAnswer::No, u"Table Create");
    boxes.expect(kRebuilt, MsgAnswer::Ok, u"Tolvek");
    pick(form.memDBEdit);
    EXPECT_EQ(subjects(), (Texts{u"first", u"second"}));
    EXPECT_EQ(panes(), (Texts{u"0", u"0", u"", u""}));
    expectReady();
}

TEST_F(StoreCommandsTest, ExportRebuildAndImportBringTheArchiveBack)
{
    exportAll();
    expectQuestion(kRebuild, MsgAnswer::Yes);
    boxes.expect(kReplace, MsgAnswer::Yes);
    boxes.expect(kRebuilt);
    pick(form.memDBEdit);
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    importAll();
    EXPECT_EQ(subjects(), (Texts{u"first", u"second"}));
}

TEST_F(StoreCommandsTest, AQuestionThatCantBeAskedIsToldAndDoesNothing)
{
    Texts reported;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        if (box.buttons == MsgButtons::YesNo) throw RuntimeError(7);
        reported.push_back(box.title);
        return MsgAnswer::Ok;
    });
    for (const MenuEntry* entry : {form.memExport, form.memInport, form.memDBEdit})
        pick(entry);
    EXPECT_EQ(reported,
              (Texts{u"エラーメッセージ (memExport_Click)", u"エラーメッセージ (memInport_Click)",
                     u"エラーメッセージ (memDBEdit_Click)"}));
    EXPECT_EQ(rows(u"tblTolvek"), 2);
    EXPECT_FALSE(exists("tblTolvek.Txt"));
}

TEST_F(StoreCommandsTest, BothWaysYieldAfterTheThirdTableAndEachLaterOne)
{
    execute(Statement{u"DELETE FROM tblTolvek"});
    execute(Statement{u"DELETE FROM tblSearch_Addresses"});
    execute(Statement{u"DELETE FROM tblSearch_Name"});
    boxes.expect(kLoaded);
    EXPECT_EQ(yieldsOf(dbLoad), 4) << "no file, so no table yields itself";
    boxes.expect(kUnLoaded);
    EXPECT_EQ(yieldsOf(dbUnLoad), 4) << "no rows";
}

}
}
