#include "browse/navigator.h"
#include "platform/runtime/test_hooks.h"

#include "browse/subject_list.h"
#include "filter/filter_rules.h"
#include "support/window_fixture.h"
#include "support/yield_watch.h"

#include <QApplication>
#include <QMouseEvent>

namespace tolvek::test {
namespace {

class NavigatorTest : public WindowFixture {
protected:
    static void addAddress(const Text& address)
    {
        Statement sql{u"INSERT INTO tblSearch_Addresses ( tblSearch_Addr_Data ) VALUES( '"};
        sql << address << u"' )";
        execute(sql);
    }
    static void addName(const Text& name)
    {
        Statement sql{u"INSERT INTO tblSearch_Name ( tblSearch_Name_Data ) VALUES( '"};
        sql << name << u"' )";
        execute(sql);
    }
    Text brokenArchive() const
    {
        writeBytes(file("Broken.Mdb"), std::string(5000, 'x'));
        return joinPath(appPath(), u"Broken.Mdb");
    }
    static void click(QWidget& widget)
    {
        const QPointF middle = QPointF(widget.rect().center());
        const QPointF global = widget.mapToGlobal(middle);
        QMouseEvent press(QEvent::MouseButtonPress, middle, global, Qt::LeftButton, Qt::LeftButton,
                          {});
        QMouseEvent release(QEvent::MouseButtonRelease, middle, global, Qt::LeftButton,
                            Qt::NoButton, {});
        QApplication::sendEvent(&widget, &press);
        QApplication::sendEvent(&widget, &release);
    }
};

TEST_F(NavigatorTest, AddressesAndNamesComeInTheGeneralOrder)
{
    for (const char16_t* address :
         {u"taro_y@x.jp", u"taro@x.jp", u"taro.y@x.jp", u"Co-op@x.jp", u"coop@x.jp"})
        addAddress(address);
    dspSearch_Addr(form);
    EXPECT_EQ(entries(*form.lstNameOrAddr),
              (std::vector<Text>{u"coop@x.jp", u"Co-op@x.jp", u"taro.y@x.jp", u"taro@x.jp",
                                 u"taro_y@x.jp"}));
    for (const char16_t* name : {u"設定無し", u"はな", u"あき"})
        addName(name);
    dspSearch_Name(form);
    EXPECT_EQ(entries(*form.lstNameOrAddr), (std::vector<Text>{u"あき", u"はな", u"設定無し"}));
}

TEST_F(NavigatorTest, EachDateIsOneEntryAndTheNewestComesFirst)
{
    store(mail(u"a@x.jp", u"b@x.jp", u"一", u"20000101", u"080000"));
    store(mail(u"a@x.jp", u"b@x.jp", u"二", u"20020303"));
    store(mail(u"c@x.jp", u"b@x.jp", u"三", u"20000101", u"230000"));
    form.txtMail->setText(u"x");
    dspSearch_Date(form);
    EXPECT_EQ(entries(*form.lstNameOrAddr), (std::vector<Text>{u"20020303", u"20000101"}));
    EXPECT_EQ(form.txtMail->Text(), u"");
}

TEST_F(NavigatorTest, OnlyTheDatesClearThePane)
{
    for (auto list : {dspSearch_Addr, dspSearch_Name, dspSearch_Filter}) {
        form.txtMail->setText(u"stays");
        list(form);
        EXPECT_EQ(form.txtMail->Text(), u"stays");
    }
}

TEST_F(NavigatorTest, TheFilterListAndTheRulesInMemoryAreOneTable)
{
    addFilter(30, 1, 0, u"三", u"c");
    addFilter(10, 0, 1, u"読まない", u"x");
    addFilter(20, 2, 0, u"二", u"b");
    tblFilter_Get();
    dspSearch_Filter(form);
    EXPECT_EQ(entries(*form.lstNameOrAddr), (std::vector<Text>{u"二", u"三"}));
    EXPECT_EQ(gFilterRule[0].No, 20);
    EXPECT_EQ(gFilterRule[1].No, 30);
    EXPECT_EQ(gFilterRule[1].Data, u"c");
    EXPECT_EQ(gFilterRule[2].No, 9999); // the do-not-read rule is no longer in memory
    EXPECT_EQ(gFilterRuleCnt, 3);       // the count is unchanged
}

TEST_F(NavigatorTest, WithoutSortingRulesTheListIsEmptyAndTheTableIsEmptyEntries)
{
    addFilter(10, 0, 1, u"読まない", u"x");
    tblFilter_Get();
    gFilterRule[255].Header = u"stays";
    dspSearch_Filter(form);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
    EXPECT_EQ(gFilterRule[0].No, 9999);
    EXPECT_EQ(gFilterRule[255].Header, u"stays");
    gFilterRule[255] = FilterRule{};
}

TEST_F(NavigatorTest, WithoutAnyRuleNothingIsReset)
{
    gFilterRule[0].Header = u"stays";
    dspSearch_Filter(form);
    EXPECT_EQ(gFilterRule[0].Header, u"stays");
    gFilterRule[0] = FilterRule{};
}

TEST_F(NavigatorTest, CaptionsFollowTheDisplayType)
{
    const struct {
        int type;
        const char16_t *label, *button, *tip;
    } cases[] = {{0, u"アドレス　表示", u"アドレス　削除", u"選択されているアドレスを削除します"},
                 {1, u"送受信者名　表示", u"名前　削除", u"選択されている名前のメールを削除します"},
                 {2, u"日付　表示", u"日付　削除", u"選択されている日付のメールを削除します"},
                 {3, u"フィルター　表示", u"フィルター　削除",
                  u"選択されている抽出条件のメールを削除します"},
                 {9, u"フィルター　表示", u"フィルター　削除",
                  u"選択されている抽出条件のメールを削除します"}};
    for (const auto& c : cases) {
        gDisplayType = c.type;
        dspSelData(form);
        EXPECT_EQ(form.lblNameOrAddr->Caption(), c.label);
        EXPECT_EQ(form.cmdAddrDel->Caption(), c.button);
        EXPECT_EQ(form.cmdAddrDel->ToolTipText(), c.tip);
    }
}

TEST_F(NavigatorTest, AClickOnTheLabelCyclesThroughTheTypes)
{
    for (int expected : {1, 2, 3, 0}) {
        click(*form.lblNameOrAddr);
        EXPECT_EQ(gDisplayType, expected);
    }
    for (int stray : {7, -4}) {
        gDisplayType = stray;
        click(*form.lblNameOrAddr);
        EXPECT_EQ(gDisplayType, 0);
    }
}

TEST_F(NavigatorTest, TheMenuEntryCyclesAndGivesTheFocusToTheReadButton)
{
    form.memNameOrAddr->action().trigger();
    EXPECT_EQ(gDisplayType, 1);
    EXPECT_TRUE(form.comMailRead->HasFocus());
}

TEST_F(NavigatorTest, AnEmptyArchiveHasFourEmptyLists)
{
    for (int type : {0, 1, 2, 3}) {
        gDisplayType = type;
        dspSelData(form);
        EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
        EXPECT_EQ(form.lstNameOrAddr->ListIndex(), -1);
        EXPECT_EQ(form.lstNameOrAddr->Text(), u"");
    }
}

TEST_F(NavigatorTest, AClickOnAnEmptyListFindsNothing)
{
    dspSelData(form);
    click(*form.lstNameOrAddr->viewport());
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    EXPECT_TRUE(form.comMailRead->Enabled());
}

TEST_F(NavigatorTest, PickingAnEntryShowsItsLastMail)
{
    addAddress(u"a@x.jp");
    store(mail(u"a@x.jp", u"b@x.jp", u"古い", u"20000101"));
    store(mail(u"a@x.jp", u"b@x.jp", u"新しい", u"20000201"));
    dspSelData(form);
    form.lstNameOrAddr->SetFocus();
    form.lstNameOrAddr->setListIndex(0);
    EXPECT_EQ(form.lstSubject->ListIndex(), 1);
    EXPECT_EQ(form.txtMail->Text(), u"本文\r\n");
    EXPECT_EQ(form.lblHead->Caption().substr(0, 7), u"件　名：新しい");
    EXPECT_EQ(gBusyFlag, 0);
    EXPECT_TRUE(form.comMailRead->Enabled());
}

TEST_F(NavigatorTest, AListKeepsTheFocusThroughItsOwnClick)
{
    addAddress(u"a@x.jp");
    addAddress(u"b@x.jp");
    store(mail(u"a@x.jp", u"b@x.jp"));
    dspSelData(form);
    form.lstNameOrAddr->SetFocus();
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(form.lstNameOrAddr, &down);
    EXPECT_TRUE(form.lstNameOrAddr->HasFocus());
    QApplication::sendEvent(form.lstNameOrAddr, &down);
    EXPECT_TRUE(form.lstNameOrAddr->HasFocus());
    EXPECT_EQ(form.lstNameOrAddr->ListIndex(), 1);
}

TEST_F(NavigatorTest, OnABackupWithoutSubjectsTheCommandsStayOn)
{
    gBackUpDisp = 1;
    addAddress(u"gone@x.jp");
    dspSearch_Addr(form);
    form.lstNameOrAddr->setListIndex(0);
    EXPECT_TRUE(form.comMailRead->Enabled());
    store(mail(u"gone@x.jp", u"b@x.jp"));
    form.lstNameOrAddr->setListIndex(0);
    EXPECT_FALSE(form.comMailRead->Enabled());
}

TEST_F(NavigatorTest, AStrayTypeListsFiltersButPicksByDate)
{
    addFilter(10, 0, 0, u"20000101", u"x");
    store(mail(u"a@x.jp", u"b@x.jp", u"日", u"20000101"));
    gDisplayType = 5;
    dspSelData(form);
    form.lstNameOrAddr->setListIndex(0);
    EXPECT_EQ(form.lstSubject->ListCount(), 1);
}

TEST_F(NavigatorTest, AMissingDatabaseIsMadeWithoutAskingByAddressesAndFilters)
{
    for (auto list : {dspSearch_Addr, dspSearch_Filter}) {
        removeFile(file("Tolvek.Mdb"));
        list(form);
        EXPECT_TRUE(exists("Tolvek.Mdb"));
    }
}

TEST_F(NavigatorTest, AMissingDatabaseIsAskedForByNamesAndDates)
{
    const struct {
        void (*list)(frmTolvek&);
        const char16_t *title, *routine;
    } cases[] = {{dspSearch_Name, u"dspSearch Name", u"dspSearch_Name"},
                 {dspSearch_Date, u"dspSearch Date", u"dspSearch_Date"}};
    for (const auto& c : cases) {
        removeFile(file("Tolvek.Mdb"));
        boxes.expect(u"ＤＢがありません。\r\nＤＢを作成しますか？", MsgAnswer::No, c.title);
        expectDbReport(c.routine, 3024, gDbPath);
        c.list(form);
        EXPECT_FALSE(exists("Tolvek.Mdb"));
        boxes.expect(u"ＤＢがありません。\r\nＤＢを作成しますか？", MsgAnswer::Yes, c.title);
        c.list(form);
        EXPECT_EQ(rows(u"tblTolvek"), 0);
    }
}

TEST_F(NavigatorTest, AListOfMoreEntriesThanSixteenBitsIsTold)
{
    Database opened = DBEngine::OpenDatabase(gDbPath);
    inTransaction([&] {
        for (int i = 0; i < 32768; ++i) {
            Statement sql{u"INSERT INTO tblSearch_Addresses ( tblSearch_Addr_Data ) VALUES( '"};
            sql << decimal(i) << u"@x.jp' )";
            opened.Execute(sql, dbFailOnError);
        }
    });
    opened.Close();
    expectDbReport(u"GET_RECCNT", 6);
    expectDbReport(u"dspSearch_Addr", 3420);
    dspSearch_Addr(form);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
    EXPECT_EQ(rows(u"tblSearch_Addresses"), 32768);
}

TEST_F(NavigatorTest, WhileAnEntryIsReadTheStatusTextIsShownAndTheCommandsAreOff)
{
    addAddress(u"a@x.jp");
    dspSelData(form);
    std::vector<Text> lines, expected{u"データベースの",
                                      u"　　内容を読み込んでいます。",
                                      u"",
                                      u"　　　少々お待ちください。",
                                      u"",
                                      u""};
    gDbPath = brokenArchive();
    hooks::setMsgBox([&](const MsgBoxRequest&) {
        lines.assign(gStatusLines.begin(), gStatusLines.end());
        EXPECT_EQ(gBusyFlag, -1);
        EXPECT_FALSE(form.comMailRead->Enabled());
        EXPECT_EQ(form.txtMail->FontSize(), 20);
        return MsgAnswer::Ok;
    });
    form.lstNameOrAddr->setListIndex(0);
    EXPECT_EQ(lines, expected);
    EXPECT_TRUE(form.comMailRead->Enabled());
}

TEST_F(NavigatorTest, EachListReportsUnderItsOwnName)
{
    const std::pair<void (*)(frmTolvek&), TextView> lists[] = {
        {dspSearch_Addr, u"dspSearch_Addr"},
        {dspSearch_Name, u"dspSearch_Name"},
        {dspSearch_Date, u"dspSearch_Date"},
        {dspSearch_Filter, u"dspSearch_Filter"}};
    gDbPath = brokenArchive();
    for (const auto& [list, routine] : lists) {
        expectDbReport(routine, 3343, gDbPath);
        list(form);
    }
}

// A report that can't be shown fails itself; the caller then reports that failure.
TEST_F(NavigatorTest, EachEventReportsUnderItsOwnNameAndItsCommandsComeBack)
{
    addAddress(u"a@x.jp");
    dspSelData(form);
    const struct {
        std::function<void()> event;
        std::vector<Text> unshown;
        TextView reported;
    } cases[] = {
        {[&] { dspSelData(form); }, {u"dspSearch_Addr"}, u"dspSelData"},
        {[&] { lstNameOrAddr_Click(form); }, {u"dspSubject"}, u"lstNameOrAddr_Click"},
        {[&] { lstSubject_Click(form); }, {u"dspMail"}, u"lstSubject_Click"},
        {[&] { lblNameOrAddr_Click(form); }, {u"dspSearch_Name"}, u"lblNameOrAddr_Click"},
        {[&] { memNameOrAddr_Click(form); },
         {u"dspSearch_Name", u"lblNameOrAddr_Click"},
         u"memNameOrAddr_Click"},
    };
    gDbPath = brokenArchive();
    for (const auto& c : cases) {
        gDisplayType = 0;
        std::vector<Text> reported;
        hooks::setMsgBox([&](const MsgBoxRequest& box) {
            for (const Text& routine : c.unshown)
                if (box.title == u"エラーメッセージ (" + routine + u")") throw RuntimeError(7);
            reported.push_back(box.title);
            return MsgAnswer::Ok;
        });
        c.event();
        EXPECT_EQ(reported, std::vector<Text>{u"エラーメッセージ (" + Text(c.reported) + u")"});
        if (c.unshown.size() == 1) { // the event ran to its end
            EXPECT_TRUE(form.comMailRead->Enabled()) << toUtf8(c.reported);
        }
    }
}

TEST_F(NavigatorTest, AListYieldsAtEachRowThatIsCountedAndOnceAtItsEnd)
{
    void (*const lists[])(frmTolvek&) = {dspSearch_Addr, dspSearch_Name, dspSearch_Date,
                                         dspSearch_Filter};
    for (const auto list : lists)
        EXPECT_EQ(yieldsOf([&] { list(form); }), 0);
    for (const int n : {1, 2, 3}) {
        addAddress(decimal(n));
        addName(decimal(n));
        store(mail(u"a@x.jp", u"b@x.jp", u"s", decimal(20000100 + n)));
        addFilter(n, 1, 0, u"title", u"s");
    }
    for (const auto list : lists)
        EXPECT_EQ(yieldsOf([&] { list(form); }), 3 + 1);
}

}
}
