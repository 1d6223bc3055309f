// Moves the mails to a file of the day, through the main window's own menu.
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "shell/backup_commands.h"

#include "store/database_files.h"
#include "support/backup_fixture.h"
#include "support/painted.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

using BackupCommandsTest = BackUpTest;

const TextView kOnceADay = u"今日はすでに１回バックアップを実行しています。\r\n"
                           u"バックアップは，１日１回しか出来ません。";

// ---- making one ----

TEST_F(BackupCommandsTest, TheMailsMoveIntoTheFileOfTheDayAndNamesAndRulesLiveOn)
{
    const Texts rules = column(u"SELECT tblFilter_Header FROM tblFilter");
    backUp();
    EXPECT_EQ(subjectsIn(pathOf(u"Tolvek_20000225.Mdb")), kBothSubjects);
    EXPECT_EQ(subjectsIn(pathOf(u"Tolvek.Mdb.Bak")), kBothSubjects);
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(rows(u"tblFilterData"), 0);
    EXPECT_EQ(rows(u"tblSearch_Addresses"), 0);
    EXPECT_EQ(rows(u"tblSearch_Name"), 0);
    EXPECT_EQ(column(u"SELECT tblFriend_Name FROM tblFriend"), Texts{u"花子"});
    EXPECT_EQ(column(u"SELECT tblFilter_Header FROM tblFilter"), rules);
    EXPECT_EQ(fileNames(folder.path()).size(), 3u) << "no side file is left";
}

TEST_F(BackupCommandsTest, TheWindowIsEmptyAndReadyAfterwardsAndNoBoxTellsOfSuccess)
{
    clickEntry(*form.lstNameOrAddr, 0);
    ASSERT_EQ(form.lstSubject->ListCount(), 1);
    backUp();
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.lblHead->Caption(), u"");
    EXPECT_EQ(commandsOff(), "");
    EXPECT_EQ(gBusyFlag, 0);
    EXPECT_EQ(form.Caption(), kMainCaption);
    EXPECT_EQ(boxes.shown().size(), 1u);
}

struct Display {
    int type;
    TextView label;
    int entries; // number of entries after the backup
};

class BackupCommandsDisplayTest : public BackUpTest,
                                  public ::testing::WithParamInterface<Display> {};

TEST_P(BackupCommandsDisplayTest, TheNavigatorIsListedAnewForItsDisplay)
{
    gDisplayType = GetParam().type;
    form.lblNameOrAddr->setCaption(u"");
    backUp();
    EXPECT_EQ(form.lblNameOrAddr->Caption(), GetParam().label);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), GetParam().entries);
}

INSTANTIATE_TEST_SUITE_P(Displays, BackupCommandsDisplayTest,
                         ::testing::Values(Display{0, u"アドレス　表示", 0},
                                           Display{1, u"送受信者名　表示", 0},
                                           Display{2, u"日付　表示", 0},
                                           Display{3, u"フィルター　表示", 1},
                                           Display{7, u"フィルター　表示", 1}));

TEST_F(BackupCommandsTest, TheMailsAreThrownOutOfTheLiveStoreSoNoIsTheAnswerOfEnter)
{
    const auto before = contents();
    backUp(MsgAnswer::No);
    EXPECT_EQ(boxes.shown().front().defaultAnswer, MsgAnswer::No);
    EXPECT_EQ(boxes.shown().front().buttons, MsgButtons::YesNo);
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(commandsOff(), "");
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 3);
}

TEST_F(BackupCommandsTest, ASecondOneOnADayStopsAndChangesNothingNotEvenByACompaction)
{
    backUp();
    store(mail(u"hanako@example.jp", u"taro@example.jp", u"third"));
    DBEngine::Rest();
    const auto before = contents();
    boxes.expect(kBackUpQuestion, MsgAnswer::Yes, u"Tolvek");
    boxes.expect(kOnceADay, MsgAnswer::Ok, u"Tolvek");
    choose(form.memBackUp_FileEdit);
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(commandsOff(), "");
}

TEST_F(BackupCommandsTest, AFileOfTheDaysNameRefusesWhoeverMadeIt)
{
    writeBytes(file("Tolvek_20000225.Mdb"), "restored by hand");
    const auto before = contents();
    boxes.expect(kBackUpQuestion, MsgAnswer::Yes);
    boxes.expect(kOnceADay);
    choose(form.memBackUp_FileEdit);
    EXPECT_EQ(contents(), before);
}

TEST_F(BackupCommandsTest, OnceTheFirstFileIsGoneTheSameDayTakesAnother)
{
    backUp();
    removeDatabase(pathOf(u"Tolvek_20000225.Mdb"));
    store(mail(u"hanako@example.jp", u"taro@example.jp", u"third"));
    backUp();
    EXPECT_EQ(subjectsIn(pathOf(u"Tolvek_20000225.Mdb")), Texts{u"third"});
}

TEST_F(BackupCommandsTest, TheNameHasFourTwoAndTwoDigitsOfTheSystemsDate)
{
    hooks::setClock([] { return DateTime{2031, 1, 2, 23, 59, 59}; });
    backUp();
    EXPECT_TRUE(exists("Tolvek_20310102.Mdb"));
}

TEST_F(BackupCommandsTest, MailsThatPostPetStillKeepsComeInAgainBesideTheFile)
{
    backUp();
    store(mail(u"hanako@example.jp", u"taro@example.jp", u"first"));
    EXPECT_EQ(subjectsIn(gDbPath), Texts{u"first"});
}

// The timer makes the text blink as long as gBusyFlag is set.
TEST_F(BackupCommandsTest, TheStatusTextStandsAndBlinksWhileTheMailsMove)
{
    std::vector<Text> panes;
    Int16 busy = 0;
    std::string off;
    hooks::setFileProbe([&](FileOperation operation, const Path& path) {
        if (operation != FileOperation::Rename || path.filename() == "Tolvek.Mdb") return;
        panes.push_back(form.txtMail->Text());
        busy = gBusyFlag;
        off = commandsOff();
    });
    backUp();
    ASSERT_FALSE(panes.empty());
    EXPECT_EQ(panes.front(), u"\r\n\r\n　Ｔｏｌｖｅｋの各データを\r\n　　　更新しています。"
                             u"\r\n　少々お待ちください。\r\n\r\n");
    EXPECT_EQ(busy, -1);
    EXPECT_EQ(off, kOffAfterAFailure);
}

// Recognised by what each step shows or reports: the mails are gone, so the tables tell
// nothing.
TEST_F(BackupCommandsTest, NamesSearchTablesAndFilterResultsAreMadeAnewInTheirOrder)
{
    bool broken = false;
    const auto progress = [] { return gStatusLines[3] == u"   1 / 1  のフィルターデータを"; };
    bool filtered = false;
    {
        const YieldWatch yields([&] { filtered = filtered || progress(); });
        backUp();
    }
    EXPECT_TRUE(filtered);
    removeDatabase(pathOf(u"Tolvek_20000225.Mdb"));
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    const YieldWatch yields([&] { // the first yield after the deletes
        if (!exists("Tolvek_20000225.Mdb") || gDb.isOpen() || std::exchange(broken, true)) return;
        gDbPath += u".gone";
    });
    choose(form.memBackUp_FileEdit);
    const Reports reported = reports.take();
    ASSERT_GE(reported.size(), 5u);
    EXPECT_EQ(Reports(reported.begin() + 1, reported.begin() + 5),
              (Reports{"edFriendName 3024", "edSearch_Name 3024", "edSearch_Addr 3024",
                       "tblFilterData_Sel 3024"}));
}

// The compaction that follows doesn't yield: for seconds the pane shows what was
// painted before it.
TEST_F(BackupCommandsTest, TheStatusTextIsOnTheScreenWhenTheFirstFileIsTouched)
{
    std::vector<bool> inked;
    hooks::setFileProbe([&](FileOperation, const Path&) {
        if (gBusyFlag == -1 && inked.empty())
            inked.push_back(isInkedIn(Qt::black, painted(*form.txtMail->viewport())));
    });
    backUp();
    EXPECT_EQ(inked, std::vector<bool>{true});
}

// ---- making one that fails ----

TEST_F(BackupCommandsTest, ATargetThatCantBeWrittenIsReportedAndNoMailIsDeleted)
{
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Write && path.filename() == "Tolvek_20000225.Mdb.Compact")
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    boxes.expect(kBackUpQuestion, MsgAnswer::Yes);
    expectDbReport(u"memBackUp_FileEdit_Click", 61);
    choose(form.memBackUp_FileEdit);
    hooks::setFileProbe({});
    EXPECT_EQ(subjectsIn(gDbPath), kBothSubjects);
    EXPECT_FALSE(exists("Tolvek_20000225.Mdb"));
    EXPECT_EQ(commandsOff(), kOffAfterAFailure);
    EXPECT_EQ(gBusyFlag, -1);
    EXPECT_NE(form.txtMail->Text().find(u"少々お待ちください。"), Text::npos);
}

TEST_F(BackupCommandsTest, AFolderOfTheDaysNameIsATargetThatIsThere)
{
    std::filesystem::create_directory(file("Tolvek_20000225.Mdb"));
    boxes.expect(kBackUpQuestion, MsgAnswer::Yes);
    expectDbReport(u"memBackUp_FileEdit_Click", 3204);
    choose(form.memBackUp_FileEdit);
    EXPECT_EQ(subjectsIn(gDbPath), kBothSubjects);
}

TEST_F(BackupCommandsTest, ACompactionThatLeftNoDatabaseEndsTheCommandBeforeAnyDelete)
{
    removeDatabase(gDbPath);
    ReportList reports;
    reports.listen(MsgAnswer::Yes);
    choose(form.memBackUp_FileEdit);
    EXPECT_EQ(reports.take(), (Reports{"Tolvek: " + toUtf8(kBackUpQuestion), "dbCompress 3024",
                                       "memBackUp_FileEdit_Click 3024"}));
    EXPECT_FALSE(exists("Tolvek_20000225.Mdb"));
    EXPECT_FALSE(exists("Tolvek.Mdb"));
    EXPECT_EQ(commandsOff(), kOffAfterAFailure);
}

// The file stays: it is the backup of the day and holds everything that is still live.
TEST_F(BackupCommandsTest, ADeleteThatFailsEndsTheCommandBehindAWholeBackUp)
{
    hooks::setFileProbe([this](FileOperation operation, const Path& path) {
        const bool ofLive = path.filename().string().starts_with("Tolvek.Mdb");
        if (ofLive && operation == FileOperation::Write && exists("Tolvek_20000225.Mdb"))
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    boxes.expect(kBackUpQuestion, MsgAnswer::Yes);
    expectDbReport(u"memBackUp_FileEdit_Click", 57);
    choose(form.memBackUp_FileEdit);
    hooks::setFileProbe({});
    EXPECT_EQ(subjectsIn(gDbPath), kBothSubjects);
    EXPECT_EQ(subjectsIn(pathOf(u"Tolvek_20000225.Mdb")), kBothSubjects);
    EXPECT_EQ(commandsOff(), kOffAfterAFailure);
}

// A database left open by a declined question must not block the renames.
TEST_F(BackupCommandsTest, ADatabaseThatWasLeftOpenIsClosedFirst)
{
    gDb = DBEngine::OpenDatabase(gDbPath);
    backUp();
    EXPECT_FALSE(gDb.isOpen());
    EXPECT_EQ(subjectsIn(pathOf(u"Tolvek_20000225.Mdb")), kBothSubjects);
    EXPECT_EQ(rows(u"tblTolvek"), 0);
}

TEST_F(BackupCommandsTest, EventsRunBeforeAndBetweenTheRebuildingsAfterTheMailsHaveMoved)
{
    int between = 0;
    const YieldWatch yields([&] {
        if (gBusyFlag != -1 || !exists("Tolvek_20000225.Mdb") || gDb.isOpen()) return;
        if (++between > 1) return;
        EXPECT_EQ(rows(u"tblFilterData"), 0);
        EXPECT_EQ(rows(u"tblTolvek"), 0);
        EXPECT_EQ(rows(u"tblSearch_Addresses"), 0);
        EXPECT_EQ(rows(u"tblSearch_Name"), 0);
    });
    backUp();
    EXPECT_EQ(between, 4);
}

}
}
