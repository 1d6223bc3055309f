#include "browse/filter_run.h"

#include "browse/navigator.h"
#include "filter/filter_results.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/frm_tolvek_work.h"
#include "shell/base/guard.h"

namespace tolvek {

// The filter titles are listed first whatever is on display: that reads the
// rules anew. The list of the display type then takes their place.
void memFilterGo_Click(frmTolvek& form)
{
    const ResumeNext on{u"memFilterGo_Click"};
    on([] {
        setStatusLines(u"　振り分け処理を行っています。", u"　少々お待ちください。", u"", u"", u"",
                       u"");
    });
    on([] { gBusyFlag = -1; });
    on([&] { dspStatus(form, true, gStatusLines); });
    emptyPanes(on, form);
    on([] { gBusyFlag = -1; });
    on([&] { dspEnable(form, false, 0); });
    on([] { tblFilterData_Sel(); });
    on([&] { dspSearch_Filter(form); });
    on([&] { dspSelData(form); });
    endWork(on, form);
    on([&] { form.comMailRead->SetFocus(); });
}

}
