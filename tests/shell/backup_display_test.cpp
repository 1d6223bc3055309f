// Displays a backup in the main window and returns to the live store.
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "support/backup_fixture.h"
#include "support/jet_reader.h"
#include "support/spoilt_jet.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

using BackupDisplayTest = BackUpTest;

// ---- looking at one ----

TEST_F(BackupDisplayTest, AllMailsAreShownFromTheFileAndNothingThatChangesTheStoreCanBePressed)
{
    backUp();
    const std::string before = readBytes(file("Tolvek_20000225.Mdb"));
    view(u"Tolvek_20000225.Mdb");
    EXPECT_EQ(form.Caption(), u"PostPet Mail 表示 （ ﾊﾞｯｸｱｯﾌﾟ ﾌｧｲﾙ : Tolvek_20000225.Mdb ）");
    EXPECT_EQ(gDbPath, pathOf(u"Tolvek_20000225.Mdb"));
    EXPECT_EQ(gBackUpDisp, 1);
    EXPECT_EQ(entries(*form.lstNameOrAddr), kAddresses);
    EXPECT_EQ(commandsOff(), kOffOnABackUp);
    clickEntry(*form.lstNameOrAddr, 2);
    EXPECT_EQ(form.lstSubject->ListCount(), 2);
    EXPECT_EQ(form.txtMail->Text(), u"本文\r\n");
    EXPECT_EQ(commandsOff(), kOffOnABackUp);
    for (const int entriesShown : {2, 2, 1, 3}) { // names, dates, filters, addresses
        pressAt(*form.lblNameOrAddr, {5, 5});
        EXPECT_EQ(form.lstNameOrAddr->ListCount(), entriesShown) << int(gDisplayType);
        EXPECT_EQ(commandsOff(), kOffOnABackUp);
    }
    DBEngine::Rest();
    EXPECT_EQ(readBytes(file("Tolvek_20000225.Mdb")), before);
}

TEST_F(BackupDisplayTest, DamagedTextsOfAnOldBackUpAreReportedOnceWhenItIsShown)
{
    const JetReader reader;
    const std::string before = jetWithZeroedText();
    writeBytes(file("Tolvek_19991231.Mdb"), before);
    boxes.expectAndLook(kOneSpoiltText, MsgAnswer::Ok, [this] {
        EXPECT_GT(form.lstNameOrAddr->ListCount(), 0) << "it is on display already";
        EXPECT_EQ(commandsOff(), kOffOnABackUp);
    });
    view(u"Tolvek_19991231.Mdb");
    EXPECT_EQ(subjectsIn(gDbPath).size(), 5u);
    EXPECT_EQ(boxes.pending(), 0u);
    view(u"Tolvek_19991231.Mdb");
    DBEngine::Abandon();
    EXPECT_EQ(readBytes(file("Tolvek_19991231.Mdb")), before);
}

TEST_F(BackupDisplayTest, BackToNormalShowsTheLiveStoreAndTurnsTheCommandsOn)
{
    backUp();
    store(mail(u"new@example.jp", u"taro@example.jp", u"third"));
    edSearch_Addr();
    view(u"Tolvek_20000225.Mdb");
    choose(form.memNomalDisp);
    EXPECT_EQ(form.Caption(), kMainCaption);
    EXPECT_EQ(gDbPath, pathOf(u"Tolvek.Mdb"));
    EXPECT_EQ(gBackUpDisp, 0);
    EXPECT_EQ(entries(*form.lstNameOrAddr), (Texts{u"new@example.jp", u"taro@example.jp"}));
    EXPECT_EQ(commandsOff(), "");
}

TEST_F(BackupDisplayTest, FromOneBackUpTheMenuLeadsToAnother)
{
    backUp();
    hooks::setClock([] { return DateTime{2000, 2, 26, 12, 0, 0}; });
    store(mail(u"new@example.jp", u"taro@example.jp", u"third"));
    backUp();
    view(u"Tolvek_20000225.Mdb");
    view(u"Tolvek_20000226.Mdb");
    EXPECT_EQ(gDbPath, pathOf(u"Tolvek_20000226.Mdb"));
    EXPECT_EQ(gBackUpDisp, 1);
    EXPECT_EQ(commandsOff(), kOffOnABackUp);
}

TEST_F(BackupDisplayTest, TheWindowShowsNothingOfTheDisplayBefore)
{
    backUp();
    view(u"Tolvek_20000225.Mdb");
    clickEntry(*form.lstNameOrAddr, 0);
    ASSERT_NE(form.txtMail->Text(), u"");
    choose(form.memNomalDisp);
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.lblHead->Caption(), u"");
}

TEST_F(BackupDisplayTest, CancelLeavesTheDisplayAsItWas)
{
    boxes.expect(u"バックアップ ファイルはまだ作成されていません。");
    gBackUpFile = u"of an earlier choice";
    clickEntry(*form.lstNameOrAddr, 0);
    const ModalScript dialog("frmBackUpFile", [](QWidget& shown) {
        press(shown, "cmdOK");
        EXPECT_TRUE(shown.isVisible());
        press(shown, "cmdCancel");
    });
    choose(form.memBackUp_FileSelect);
    EXPECT_EQ(form.Caption(), kMainCaption);
    EXPECT_EQ(gDbPath, pathOf(u"Tolvek.Mdb"));
    EXPECT_EQ(form.lstSubject->ListCount(), 1);
    EXPECT_EQ(form.txtMail->Text(), u"本文\r\n");
    EXPECT_EQ(commandsOff(), "");
}

TEST_F(BackupDisplayTest, AnEarlierChoiceIsForgottenByTheCloseBoxToo)
{
    backUp();
    gBackUpFile = u"Tolvek_20000225.Mdb";
    const ModalScript dialog("frmBackUpFile", [](QWidget& shown) { shown.close(); });
    choose(form.memBackUp_FileSelect);
    EXPECT_EQ(gBackUpDisp, 0);
    EXPECT_EQ(gDbPath, pathOf(u"Tolvek.Mdb"));
}

// A read of mail halfway would go into the backup.
TEST_F(BackupDisplayTest, NoCommandIsOnWhileTheDisplayChanges)
{
    backUp();
    gDisplayType = 2; // walks all mails and yields
    int looks = 0;
    const YieldWatch yields([&] {
        if (QApplication::activeModalWidget() || gBackUpDisp == 1) return;
        if (gDbPath == pathOf(u"Tolvek.Mdb")) return;
        ++looks;
        EXPECT_EQ(commandsOff(), kOffAfterAFailure);
    });
    view(u"Tolvek_20000225.Mdb");
    EXPECT_GT(looks, 0);
    EXPECT_EQ(commandsOff(), kOffOnABackUp);
}

TEST_F(BackupDisplayTest, NoRulesOfABackUpStayInMemory)
{
    gDisplayType = 3;
    backUp();
    execute(Statement{u"UPDATE tblFilter SET tblFilter_Header = '別の題'"},
            pathOf(u"Tolvek_20000225.Mdb"));
    view(u"Tolvek_20000225.Mdb");
    ASSERT_EQ(gFilterRule[0].Header, u"別の題");
    choose(form.memNomalDisp);
    EXPECT_EQ(gFilterRuleCnt, 2);
    EXPECT_EQ(gFilterRule[0].Header, u"花子から");
    EXPECT_EQ(gFilterRule[1].Header, u"読まない");
    EXPECT_EQ(gNonCopyRuleCnt, 1);
}

// ---- files that aren't backups ----

struct Foreign {
    const char* name;
    std::string bytes; // "" for a database of other tables
    Reports reports;
};

TEST_F(BackupDisplayTest, AForeignFileIsOpenedAsChosenAndBackToNormalWorks)
{
    const Foreign foreigners[] = {
        {"old.mdb",
         "only a text, but longer than the shortest of all headers, which has one "
         "hundred bytes: the quick brown fox",
         {"dspSearch_Addr 3343"}},
        {"short.Mdb", "x", {"dspSearch_Addr 3343"}},
        {"other.MDB", "", {"dspSearch_Addr 3343"}},
    };
    for (const Foreign& foreign : foreigners) {
        const Text path = pathOf(fromUtf8(foreign.name));
        if (foreign.bytes.empty()) {
            Database made = DBEngine::Workspaces(0).CreateDatabase(path, u"");
            made.Close();
        } else {
            writeBytes(file(foreign.name), foreign.bytes);
        }
        const std::string before = readBytes(file(foreign.name));
        ReportList reports;
        reports.listen();
        view(fromUtf8(foreign.name));
        EXPECT_EQ(reports.take(), foreign.reports) << foreign.name;
        EXPECT_EQ(commandsOff(), kOffOnABackUp);
        choose(form.memNomalDisp);
        EXPECT_EQ(reports.take(), Reports{});
        EXPECT_EQ(entries(*form.lstNameOrAddr), kAddresses);
        EXPECT_EQ(readBytes(file(foreign.name)), before);
    }
}

TEST_F(BackupDisplayTest, ADamagedBackUpIsToldWhereItIsReadAndBackToNormalWorks)
{
    storeMany(300, u"hanako@example.jp");
    backUp();
    std::string bytes = readBytes(file("Tolvek_20000225.Mdb"));
    for (std::size_t i = 4096 + 8; i < bytes.size(); i += 3)
        bytes[i] = static_cast<char>(i * 31);
    writeBytes(file("Tolvek_20000225.Mdb"), bytes);
    ReportList reports;
    reports.listen();
    view(u"Tolvek_20000225.Mdb");
    EXPECT_EQ(reports.take(), Reports{"dspSearch_Addr 3343"});
    EXPECT_EQ(commandsOff(), kOffOnABackUp);
    choose(form.memNomalDisp);
    EXPECT_EQ(reports.take(), Reports{});
    EXPECT_EQ(commandsOff(), "");
    EXPECT_EQ(readBytes(file("Tolvek_20000225.Mdb")), bytes);
}

// By the file modes; for a superuser, who isn't bound by them, by the operations.
TEST_F(BackupDisplayTest, ABackUpInAFolderThatCantBeWrittenIsShownAllTheSame)
{
    using std::filesystem::perms;
    backUp();
    std::filesystem::permissions(file("Tolvek_20000225.Mdb"), perms::owner_read);
    std::filesystem::permissions(folder.path(), perms::owner_read | perms::owner_exec);
    hooks::setFileProbe([this](FileOperation operation, const Path& path) {
        const bool reads = operation == FileOperation::Open || operation == FileOperation::Read ||
                           operation == FileOperation::List;
        if (!reads && path.string().starts_with(folder.path().string()))
            throw std::system_error(std::make_error_code(std::errc::read_only_file_system));
    });
    const auto before = contents();
    view(u"Tolvek_20000225.Mdb");
    EXPECT_EQ(entries(*form.lstNameOrAddr), kAddresses);
    clickEntry(*form.lstNameOrAddr, 0);
    EXPECT_EQ(form.txtMail->Text(), u"本文\r\n");
    choose(form.memNomalDisp);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
    EXPECT_EQ(contents(), before);
    hooks::setFileProbe({});
    std::filesystem::permissions(folder.path(), perms::owner_all);
}

// The choice of a file reports under the other command's name.
TEST_F(BackupDisplayTest, AFailureIsReportedUnderTheCommandsNameAndTheDisplayChangesAllTheSame)
{
    backUp();
    const auto expectReport = [this](TextView routine) {
        boxes.expect(u"エラー番号： 5\r（" + errorText(5) + u"）", MsgAnswer::Ok,
                     u"エラーメッセージ (" + Text(routine) + u")");
    };
    bool fails = false; // the next yield that finds a file chosen
    const YieldWatch yields([&] {
        if (!gBackUpFile.empty() && std::exchange(fails, false)) throw RuntimeError(5);
    });
    gBackUpFile.clear();
    expectReport(u"memBackUp_FileEdit_Click");
    fails = true;
    view(u"Tolvek_20000225.Mdb");
    EXPECT_EQ(gBackUpDisp, 1);
    expectReport(u"memNomalDisp_Click");
    fails = true;
    choose(form.memNomalDisp);
    EXPECT_EQ(gBackUpDisp, 0);
    EXPECT_EQ(commandsOff(), "");
}

}
}
