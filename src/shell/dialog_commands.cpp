#include "shell/dialog_commands.h"

#include "app/guard.h"
#include "dialogs/frm_about.h"
#include "dialogs/frm_option.h"
#include "platform/forms/input_hold.h"
#include "platform/runtime/do_events.h"
#include "window/frm_tolvek.h"

namespace tolvek {

void memEnv_Click(frmTolvek& form)
{
    frmOption dialog;
    const ResumeNext on{u"memEnv_Click"};
    on([&] { dialog.ShowModal(&form); });
    // Kept: the font is applied after a Cancel as well; the fields are unchanged then.
    applyMailFont(form, on, FlagText::Alone);
    const InputHold hold; // the commands are enabled
    on([] { DoEventsNow(); });
    on([&] { form.comMailRead->SetFocus(); });
}

void memVar_Click(frmTolvek& form)
{
    const ResumeNext on{u"memVar_Click"};
    on([&] { frmAbout().ShowModal(&form); });
}

}
