// The main window's command 環境設定.
#include "dialogs/frm_option.h"
#include "platform/forms/do_events.h"
#include "platform/forms/input_hold.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/guard.h"

namespace tolvek {

void memEnv_Click(frmTolvek& form)
{
    frmOption dialog;
    const ResumeNext on{u"memEnv_Click"};
    on([&] { dialog.ShowModal(&form); });
    applyMailFont(form, on, FlagText::Alone);
    const InputHold hold; // the commands are on
    on([] { DoEventsNow(); });
    on([&] { form.comMailRead->SetFocus(); });
}

}
