#include "app/guard.h"
#include "app/settings.h"
#include "app/state.h"
#include "support/archive_fixture.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

namespace tolvek::test {
namespace {

class StatusLongWorkTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gBackUpDisp = 0;
        gMailTextFontSize = 10;
        form.Show();
    }
    void TearDown() override
    {
        gBusyFlag = 0;
        ArchiveFixture::TearDown();
    }
    void begin()
    {
        setStatusLines(u"一", u"二", u"", u"", u"", u"");
        gBusyFlag = -1;
        dspStatus(form, true, gStatusLines);
        dspEnable(form, false, 0);
    }
    void end() { endWork(ResumeNext{u"work_Click"}, form); }

    frmTolvek form;
};

TEST_F(StatusLongWorkTest, TheEndTakesTheStatusTextAwayAndGivesTheCommandsBack)
{
    begin();
    end();
    EXPECT_EQ(gBusyFlag, 0);
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(gStatusLines[0], u"");
    EXPECT_TRUE(form.comMailRead->Enabled());
    EXPECT_TRUE(form.lstSubject->Enabled());
}

TEST_F(StatusLongWorkTest, ThePanesAreEmptiedAndTheNavigatorStays)
{
    form.txtMail->setText(u"text");
    form.lblHead->setCaption(u"head");
    form.lstSubject->AddItem(u"subject");
    form.lstNameOrAddr->AddItem(u"name");
    emptyPanes(ResumeNext{u"work_Click"}, form);
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.lblHead->Caption(), u"");
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 1);
}

}
}
