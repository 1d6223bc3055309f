#include "shell/filter_commands.h"

#include "app/guard.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "filter/frm_filter.h"
#include "platform/forms/input_hold.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

namespace tolvek {

namespace {

void takeEdit(const ResumeNext& on, frmTolvek& form)
{
    on([] { tblFilter_UpDate(); });
    on([&] { memFilterGo_Click(form); });
}

// The editor has read the rules again and may have stored a new order before the
// Cancel. The titles listed before that would lead to the mails of other rules.
void dropEdit(const ResumeNext& on, frmTolvek& form)
{
    const InputHold hold; // the lists are refilled while the commands are enabled
    on([] { gEditCancel = 0; });
    if (isFilterView()) on([&] { dspSelData(form); });
}

}

// Rules that couldn't be read completely aren't written, however the editor was closed.
void memFilter_Click(frmTolvek& form, frmFilter& editor)
{
    // Choosing the menu entry again while the editor is open does nothing.
    if (editor.Loaded()) return;
    const ResumeNext on{u"memFilter_Click"};
    on([] { gEditCancel = 0; });
    on([&] { editor.ShowModal(&form); });
    emptyPanes(on, form);
    if (gEditCancel == 0 && gFilterRulesWhole)
        takeEdit(on, form);
    else
        dropEdit(on, form);
    on([&] { form.comMailRead->SetFocus(); });
}

// The filter titles are always listed first, since that rereads the rules. The list of
// the current display type then replaces them.
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
