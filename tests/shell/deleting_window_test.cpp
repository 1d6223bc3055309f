// The main window's deleting buttons and its filter run, as the user presses them.
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "shell/frm_tolvek_events.h"
#include "store/search_tables.h"
#include "support/archive_fixture.h"
#include "support/screen_driver.h"
#include "support/yield_watch.h"

#include <utility>

namespace tolvek::test {
namespace {

class DeletingWindowTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        writeBytes(file("TOLVEK.ini"), "[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n");
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first", u"20000215"));
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"second", u"20000216"));
        edSearch_Addr();
        addFilter(10, 1, 0, u"title", u"s");
    }
    void TearDown() override
    {
        gUnloading = -1; // the window closes without the exit's steps
        form.Unload();
        gUnloading = 0;
        gBusyFlag = 0;
        gFilterRule = {};
        gFilterRuleCnt = 0;
        ArchiveFixture::TearDown();
    }
    void run()
    {
        form.memFilterGo->action().trigger();
        rethrowKept();
    }

    frmTolvekEvents form;
};

TEST_F(DeletingWindowTest, ARowIsDeletedByItsButtonAndAnEntryByTheOther)
{
    form.Show();
    clickEntry(*form.lstNameOrAddr, 0);
    boxes.expect(u"選択されているメールを削除します\n\r     よろしいでしょうか？", MsgAnswer::Yes);
    click(*form.comMailDel);
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    clickEntry(*form.lstNameOrAddr, 0);
    boxes.expect(u"選択されているアドレスのメールを削除します\n\r     よろしいでしょうか？",
                 MsgAnswer::Yes);
    click(*form.cmdAddrDel);
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
}

TEST_F(DeletingWindowTest, TheFilterRunSortsByTheRulesReadAtTheStart)
{
    form.Show();
    run();
    EXPECT_EQ(rows(u"tblFilterData"), 2);
    EXPECT_TRUE(form.comMailDel->Enabled());
}

TEST_F(DeletingWindowTest, TheCloseBoxWorksInTheMiddleOfAFilterRun)
{
    for (int n = 0; n < 100; ++n)
        store(mail(u"a@x.jp", u"b@x.jp", u"s", decimal(19990000 + n)));
    form.Show();
    gFilterDataId = 0;
    bool closed = false;
    const YieldWatch yields([&] {
        if (gFilterDataId == 50 && !std::exchange(closed, true)) form.window()->close();
    });
    EXPECT_THROW(run(), ProgramEnd);
    EXPECT_EQ(rows(u"tblFilterData"), 50);
    EXPECT_EQ(rows(u"tblTolvek"), 102);
}

}
}
