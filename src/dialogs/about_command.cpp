#include "dialogs/frm_about.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/guard.h"

namespace tolvek {

void memVar_Click(frmTolvek& form)
{
    const ResumeNext on{u"memVar_Click"};
    on([&] { frmAbout().ShowModal(&form); });
}

}
