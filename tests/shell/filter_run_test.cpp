#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "shell/filter_commands.h"
#include "support/report_list.h"
#include "support/screen_driver.h"
#include "support/window_fixture.h"
#include "support/yield_watch.h"

#include <set>

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

class FilterRunTest : public WindowFixture {
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        onEvent(form.memFilterGo, &MenuEntry::Click, [this] { memFilterGo_Click(form); });
    }
    void TearDown() override
    {
        gDisplayType = 0;
        gFilterRule = {};
        gFilterRuleCnt = 0;
        WindowFixture::TearDown();
    }
    void choose()
    {
        form.memFilterGo->action().trigger();
        rethrowKept();
    }
    static Texts listed() { return column(u"SELECT tblFilterDt_Subject FROM tblFilterData"); }
};

TEST_F(FilterRunTest, TheResultsAreBuiltAndTheCommandsComeBack)
{
    store(mail(u"a@x.jp", u"b@x.jp", u"旅行"));
    store(mail(u"a@x.jp", u"b@x.jp", u"仕事", u"20000301"));
    addFilter(10, 1, 0, u"旅", u"旅");
    tblFilter_Get();
    form.txtMail->setText(u"a mail");
    form.lblHead->setCaption(u"its head");
    form.lstSubject->AddItem(u"its subject");
    choose();
    EXPECT_EQ(listed(), Texts{u"旅行"});
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.lblHead->Caption(), u"");
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    EXPECT_EQ(gBusyFlag, 0);
    for (const Text& line : gStatusLines)
        EXPECT_EQ(line, u"");
    EXPECT_TRUE(form.comMailRead->Enabled());
    EXPECT_TRUE(form.comMailRead->HasFocus());
}

TEST_F(FilterRunTest, TheRulesInMemoryAreWorkedAndNotThoseOfTheStore)
{
    store(mail(u"a@x.jp", u"b@x.jp", u"旅行"));
    addFilter(10, 1, 0, u"旅", u"旅");
    choose();
    EXPECT_TRUE(listed().empty());
    EXPECT_EQ(gFilterRule[0].Header, u"旅"); // listing the titles read them
}

TEST_F(FilterRunTest, TheNavigatorIsListedByTheDisplayType)
{
    store(mail(u"a@x.jp", u"b@x.jp", u"旅行"));
    addFilter(10, 1, 0, u"旅", u"旅");
    addFilter(20, 1, 0, u"友", u"友");
    const Texts expected[] = {{}, {}, {u"20000215"}, {u"旅", u"友"}, {u"旅", u"友"}};
    for (int type = 0; type <= 4; ++type) {
        gDisplayType = type;
        choose();
        EXPECT_EQ(entries(*form.lstNameOrAddr), expected[type]) << type;
    }
}

TEST_F(FilterRunTest, MeanwhileTheCommandsAreOffTheWindowLivesAndTheRuleIsNamed)
{
    storeMany(20, u"a@x.jp");
    for (int n = 1; n <= 3; ++n)
        addFilter(10 * n, 5, 0, u"見出し", u"none");
    tblFilter_Get();
    std::set<Text> shown;
    const YieldWatch yields([&] {
        if (gStatusLines[3].empty()) return;
        shown.insert(gStatusLines[3]);
        EXPECT_EQ(gBusyFlag, -1);
        EXPECT_FALSE(form.comMailRead->Enabled());
        EXPECT_FALSE(form.lstNameOrAddr->Enabled());
        EXPECT_EQ(gStatusLines[0], u"　振り分け処理を行っています。");
        EXPECT_EQ(gStatusLines[1], u"　少々お待ちください。");
        EXPECT_EQ(gStatusLines[2], u"");
        EXPECT_EQ(gStatusLines[4], u"     処理中です。");
    });
    choose();
    EXPECT_EQ(shown,
              (std::set<Text>{u"   1 / 3  のフィルターデータを", u"   2 / 3  のフィルターデータを",
                              u"   3 / 3  のフィルターデータを"}));
}

TEST_F(FilterRunTest, AFailureIsToldAndTheCommandsComeBackAllTheSame)
{
    ReportList reports;
    reports.listen();
    gDisplayType = 2;
    gFilterRuleCnt = 257;
    choose();
    EXPECT_EQ(reports.take(), Reports{"tblFilterData_Sel 9"});
    EXPECT_EQ(gBusyFlag, 0);
    EXPECT_TRUE(form.comMailRead->Enabled());
}

}
}
