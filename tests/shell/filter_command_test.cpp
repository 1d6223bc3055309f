#include "filter/filter_rules.h"
#include "filter/frm_filter.h"
#include "platform/runtime/test_hooks.h"
#include "shell/filter_commands.h"
#include "support/modal_script.h"
#include "support/screen_driver.h"
#include "support/window_fixture.h"

namespace tolvek::test {
namespace {

class FilterCommandTest : public WindowFixture {
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        gFilterRule = {};
        gFilterRuleCnt = 0;
        gNonCopyRuleCnt = 0;
        gFilterRulesWhole = true;
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first"));
        store(mail(u"jiro@example.jp", u"taro@example.jp", u"second"));
        onEvent(form.memFilter, &MenuEntry::Click, [this] { memFilter_Click(form, editor); });
    }
    void TearDown() override
    {
        gEditCancel = 0;
        gDisplayType = 0;
        WindowFixture::TearDown();
    }
    void atEditor(const std::function<void()>& steps)
    {
        const ModalScript script("frmFilter", [&](QWidget&) { steps(); });
        form.memFilter->action().trigger();
        EXPECT_FALSE(editor.Loaded());
    }
    void add(const Text& title, const Text& address)
    {
        editor.txtFilterHeader->setText(title);
        editor.optTerms[2]->click();
        editor.optAct[0]->click();
        editor.txtTerms->setText(address);
        editor.comAdd->click();
    }
    void fillPanes()
    {
        form.txtMail->setText(u"text");
        form.lblHead->setCaption(u"head");
        form.lstSubject->setList(0, u"subject");
    }
    void expectPanesEmpty()
    {
        EXPECT_EQ(form.txtMail->Text(), u"");
        EXPECT_EQ(form.lblHead->Caption(), u"");
        EXPECT_EQ(form.lstSubject->ListCount(), 0);
        EXPECT_TRUE(form.comMailRead->HasFocus());
        EXPECT_TRUE(form.comMailRead->Enabled());
    }

    frmFilter editor;
};

TEST_F(FilterCommandTest, OkWritesTheRulesAndBuildsTheResults)
{
    gDisplayType = 3;
    fillPanes();
    atEditor([&] {
        add(u"花子", u"hanako@example.jp");
        editor.comOk->click();
    });
    EXPECT_EQ(value(u"SELECT tblFilter_No FROM tblFilter"), u"10");
    EXPECT_EQ(value(u"SELECT tblFilterDt_SendAddr FROM tblFilterData"), u"hanako@example.jp");
    EXPECT_EQ(entries(*form.lstNameOrAddr), std::vector<Text>{u"花子"});
    expectPanesEmpty();
}

TEST_F(FilterCommandTest, OkWithoutAChangeBuildsTheResultsAllTheSame)
{
    addFilter(20, 2, 0, u"花子", u"hanako@example.jp");
    atEditor([&] { editor.comOk->click(); });
    EXPECT_EQ(value(u"SELECT tblFilter_No FROM tblFilter"), u"10");
    EXPECT_EQ(rows(u"tblFilterData"), 1);
}

TEST_F(FilterCommandTest, TheCloseBoxIsAnOk)
{
    atEditor([&] {
        add(u"花子", u"hanako@example.jp");
        editor.window()->close();
    });
    EXPECT_EQ(rows(u"tblFilter"), 1);
    EXPECT_EQ(rows(u"tblFilterData"), 1);
}

TEST_F(FilterCommandTest, CancelEmptiesThePanesAndWritesNothing)
{
    addFilter(20, 2, 0, u"花子", u"hanako@example.jp");
    fillPanes();
    gEditCancel = -1; // left by another editor
    atEditor([&] {
        EXPECT_EQ(gEditCancel, 0);
        add(u"次郎", u"jiro@example.jp");
        editor.comCancel->click();
    });
    EXPECT_EQ(gEditCancel, 0);
    EXPECT_EQ(value(u"SELECT tblFilter_No FROM tblFilter"), u"20");
    EXPECT_EQ(rows(u"tblFilterData"), 0);
    expectPanesEmpty();
}

// The deletion button takes the rule at the list's position.
TEST_F(FilterCommandTest, AfterACancelTheFilterViewListsTheRulesThatAreInMemory)
{
    addFilter(10, 2, 0, u"花子", u"hanako@example.jp");
    addFilter(20, 2, 0, u"次郎", u"jiro@example.jp");
    gDisplayType = 3;
    dspSelData(form);
    const ModalScript order("frmFilterDspChenge",
                            [&](QWidget& shown) { press(shown, "cmdCancel"); });
    atEditor([&] {
        clickCell(*editor.grdFilter, 1, 0);
        editor.comDel->click();
        editor.cmdDspChenge->click();
        editor.comCancel->click();
    });
    EXPECT_EQ(entries(*form.lstNameOrAddr), std::vector<Text>{u"次郎"});
    EXPECT_EQ(gFilterRule[0].Header, u"次郎");
}

TEST_F(FilterCommandTest, AfterACancelAnotherViewStaysAsItWas)
{
    form.lstNameOrAddr->setList(0, u"as it was");
    atEditor([&] { editor.comCancel->click(); });
    EXPECT_EQ(entries(*form.lstNameOrAddr), std::vector<Text>{u"as it was"});
}

TEST_F(FilterCommandTest, AFailureIsReportedAndTheCommandGoesOnToItsEnd)
{
    struct BrokenEditor : frmFilter {
        void buildControls() override { throw RuntimeError(7); }
    } broken;
    fillPanes();
    boxes.expect(u"エラー番号： 7\r（" + errorText(7) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (memFilter_Click)");
    memFilter_Click(form, broken);
    expectPanesEmpty();
}

// The close box counts as an OK, but rules that weren't read must not be taken for
// deleted ones.
TEST_F(FilterCommandTest, RulesThatCouldNotBeReadAreKeptHoweverTheEditorIsLeft)
{
    addFilter(10, 2, 0, u"花子", u"hanako@example.jp");
    gDisplayType = 3;
    int shown = 0;
    hooks::setMsgBox([&](const MsgBoxRequest&) {
        ++shown;
        return MsgAnswer::Ok;
    });
    hooks::setYield([] {
        hooks::setYield({});
        gDb.Close(); // as after a fault of the disk
    });
    atEditor([&] { editor.window()->close(); });
    EXPECT_GE(shown, 1);
    EXPECT_EQ(rows(u"tblFilter"), 1);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 1);
    EXPECT_EQ(gEditCancel, 0);
}

TEST_F(FilterCommandTest, WhileTheEditorIsOpenNoSecondOneOpens)
{
    atEditor([&] {
        memFilter_Click(form, editor);
        EXPECT_TRUE(editor.Loaded());
        click(*editor.comCancel);
    });
}

}
}
