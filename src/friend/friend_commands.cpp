#include "friend/friend_commands.h"

#include "browse/navigator.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "friend/friend_names.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/frm_tolvek_work.h"
#include "shell/base/guard.h"
#include "store/search_tables.h"

namespace tolvek {

namespace {

void beginNaming(const ResumeNext& on, frmTolvek& form)
{
    on([] {
        setStatusLines(u"ともだち帳から", u"　名前の再設定を行っています。",
                       u"　少々お待ちください。", u"", u"", u"");
    });
    on([] { gBusyFlag = -1; });
    on([&] { dspStatus(form, true, gStatusLines); });
    emptyPanes(on, form);
    on([&] { dspEnable(form, false, 0); });
}

// The search tables and the filter results hold names too.
void nameAnew(const ResumeNext& on, frmTolvek& form)
{
    on([] { edFriendName(); });
    on([] { edSearch_Addr(); });
    on([] { edSearch_Name(); });
    on([] { tblFilter_Get(); });
    on([] { tblFilterData_Sel(); });
    on([&] { dspSelData(form); });
}

}

void memFriendEd_Click(frmTolvek& form)
{
    const ResumeNext on{u"memFriendEd_Click"};
    beginNaming(on, form);
    nameAnew(on, form);
    endWork(on, form);
    on([&] { form.comMailRead->SetFocus(); });
}

void memAddressAdd_Click(frmTolvek& form)
{
    const ResumeNext on{u"memAddressAdd_Click"};
    if (form.lstSubject->ListCount() == 0) return;
    Int16 unchanged = 0;
    on([&] { unchanged = FriendNameAdd(form, form.lstSubject->ListIndex()); });
    if (unchanged == 1) return;
    on([&] { memFriendEd_Click(form); });
}

}
