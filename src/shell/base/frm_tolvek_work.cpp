#include "shell/base/frm_tolvek_work.h"

#include "shell/base/frm_tolvek.h"
#include "shell/base/guard.h"

namespace tolvek {

void emptyPanes(const ResumeNext& on, frmTolvek& form)
{
    on([&] { form.txtMail->setText({}); });
    on([&] { form.lblHead->setCaption({}); });
    on([&] { form.lstSubject->Clear(); });
}

void endWork(const ResumeNext& on, frmTolvek& form)
{
    on([] { gBusyFlag = 0; });
    on([&] { dspStatus(form, false, gStatusLines); });
    on([&] { dspEnable(form, true, gBackUpDisp); });
}

}
