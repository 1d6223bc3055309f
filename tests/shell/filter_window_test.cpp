// The main window's menu entry for the filter editor, from the menu to the navigator.
#include "filter/filter_rules.h"
#include "platform/forms/events.h"
#include "shell/frm_tolvek_events.h"
#include "support/archive_fixture.h"
#include "support/modal_script.h"

namespace tolvek::test {
namespace {

class FilterWindowTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        writeBytes(file("TOLVEK.ini"), "[PostPet Mail Option]\r\nMy Mail Addr="
                                       "taro@example.jp\r\nDisplay Type=3\r\n");
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first"));
    }
    void TearDown() override
    {
        gUnloading = -1; // the window closes without the exit's steps
        form.Unload();
        gUnloading = 0;
        gBusyFlag = 0;
        gDisplayType = 0;
        gFilterRule = {};
        gFilterRuleCnt = 0;
        ArchiveFixture::TearDown();
    }

    frmTolvekEvents form;
};

TEST_F(FilterWindowTest, ARuleMadeInTheEditorIsListedWithItsMails)
{
    form.Show();
    const ModalScript editor("frmFilter", [](QWidget& shown) {
        controlOf<TextBox>(shown, "txtFilterHeader").setText(u"花子");
        controlOf<OptionButton>(shown, "optTerms(2)").click();
        controlOf<OptionButton>(shown, "optAct(0)").click();
        controlOf<TextBox>(shown, "txtTerms").setText(u"hanako@example.jp");
        press(shown, "comAdd");
        press(shown, "comOk");
    });
    form.memFilter->action().trigger();
    rethrowKept();
    ASSERT_EQ(form.lstNameOrAddr->ListCount(), 1);
    EXPECT_EQ(form.lstNameOrAddr->List(0), u"花子");
    EXPECT_EQ(rows(u"tblFilterData"), 1);
}

}
}
