// Rules that aren't completely in memory are never written: neither while they are
// being read nor after a reading that failed.
#include "frm_filter_fixture.h"
#include "platform/runtime/test_hooks.h"
#include "support/report_list.h"

namespace tolvek::test {
namespace {

class FilterHalfReadTest : public FrmFilterTest {
protected:
    void SetUp() override
    {
        FrmFilterTest::SetUp();
        givenSorting(titles_);
    }
    void TearDown() override
    {
        hooks::setYield({});
        FrmFilterTest::TearDown();
    }

    // Makes the next reading lose its database at the first row, as after a fault.
    static void breakNextReading()
    {
        hooks::setYield([] {
            if (gFilterRuleCnt == 0) return;
            hooks::setYield({});
            gDb.Close();
        });
    }
    void expectOff(const std::vector<CommandButton*>& writing)
    {
        for (const CommandButton* button : writing)
            EXPECT_FALSE(button->Enabled()) << toUtf8(button->Name());
    }
    void expectAllStored() { EXPECT_EQ(storedTitles(), titles_); }

    const std::vector<Text> titles_{u"A", u"B", u"C"};
    ReportList reports;
};

TEST_F(FilterHalfReadTest, NothingIsWrittenWhileTheRulesAreRead)
{
    int yields = 0;
    hooks::setYield([&] {
        ++yields;
        tblFilter_UpDate();
    });
    tblFilter_Get();
    hooks::setYield({});
    EXPECT_GE(yields, 3);
    EXPECT_EQ(gFilterRuleCnt, 3);
    expectAllStored();
}

TEST_F(FilterHalfReadTest, NothingIsWrittenAfterAReadingThatFailed)
{
    reports.listen();
    breakNextReading();
    tblFilter_Get();
    EXPECT_EQ(reports.take(), Reports{"tblFilter_Get 3420"});
    tblFilter_UpDate();
    expectAllStored();
    tblFilter_Get();
    gFilterRule[2].Header = u"changed";
    tblFilter_UpDate();
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"B", u"changed"}));
}

TEST_F(FilterHalfReadTest, ATableThatCouldNotBeCountedIsNoEmptyOne)
{
    reports.listen();
    hooks::setYield([] {
        hooks::setYield({});
        gDb.Close();
    });
    tblFilter_Get();
    EXPECT_EQ(reports.take(), (Reports{"GET_RECCNT 3420", "tblFilter_Get 3420"}));
    EXPECT_EQ(gFilterRuleCnt, 0);
    tblFilter_UpDate();
    expectAllStored();
}

TEST_F(FilterHalfReadTest, AnEditorThatCouldNotBeFilledCanOnlyBeLeft)
{
    reports.listen();
    breakNextReading();
    atEditor([&] {
        expectOff({editor.comOk, editor.cmdDspChenge});
        EXPECT_TRUE(editor.comCancel->Enabled());
        click(*editor.comOk);
        click(*editor.cmdDspChenge);
        EXPECT_TRUE(editor.Loaded());
        cancel();
    });
    EXPECT_EQ(reports.take().size(), 1u);
    expectAllStored();
    atEditor([&] {
        EXPECT_TRUE(editor.comOk->Enabled());
        EXPECT_TRUE(editor.cmdDspChenge->Enabled());
        ok();
    });
}

TEST_F(FilterHalfReadTest, MoreRulesThanMemoryTakesStayInTheTable)
{
    execute(Statement{u"DELETE FROM tblFilter"});
    givenMany(300);
    reports.listen();
    atEditor([&] {
        expectOff({editor.comOk, editor.cmdDspChenge});
        editor.window()->close();
    });
    EXPECT_EQ(reports.take(), Reports{"tblFilter_Get 9"});
    tblFilter_UpDate();
    EXPECT_EQ(rows(u"tblFilter"), 300);
}

// The rules are stored, but lost to memory when they are read back.
TEST_F(FilterHalfReadTest, AnOrderDialogOverRulesThatWereNotReadBackCanOnlyBeLeft)
{
    reports.listen();
    atEditor([&] {
        const ModalScript script("frmFilterDspChenge", [&](QWidget&) {
            frmFilterDspChenge& order = editor.displayOrder;
            expectOff({order.cmdOK, order.cmdApply});
            breakNextReading();
            click(*order.cmdCancel);
        });
        breakNextReading();
        click(*editor.cmdDspChenge);
        expectOff({editor.comOk, editor.cmdDspChenge});
        cancel();
    });
    EXPECT_EQ(reports.take(), (Reports{"tblFilter_Get 3420", "tblFilter_Get 3420"}));
    expectAllStored();
}

TEST_F(FilterHalfReadTest, AnOrderThatWasNotReadBackIsNotWrittenTwice)
{
    reports.listen();
    atEditor([&] {
        const ModalScript script("frmFilterDspChenge", [&](QWidget&) {
            frmFilterDspChenge& order = editor.displayOrder;
            click(*order.cmdAllUp);
            breakNextReading();
            click(*order.cmdApply);
            expectOff({order.cmdOK, order.cmdApply});
            order.window()->close();
        });
        click(*editor.cmdDspChenge);
        expectOff({editor.comOk, editor.cmdDspChenge});
        cancel();
    });
    expectAllStored();
}

}
}
