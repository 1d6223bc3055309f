#include "shell/friend_commands.h"

#include "app/guard.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "friend/friend_book_file.h"
#include "friend/friend_names.h"
#include "friend/frm_friend.h"
#include "store/search_tables.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

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

// The search tables and the filter results hold names too, so they are rebuilt.
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
    // A failure returns 0, so the names are set again then; kept.
    if (unchanged == 1) return;
    on([&] { memFriendEd_Click(form); });
}

namespace {

// memFriendEd_Click enables the commands again.
void takeBook(const ResumeNext& on, frmTolvek& form)
{
    emptyPanes(on, form);
    on([] { gBusyFlag = -1; });
    on([&] { dspEnable(form, false, 0); });
    on([] { readFriendTmp(); });
    on([&] { memFriendEd_Click(form); });
}

// Choosing the menu entry again while the editor is open does nothing.
void editBook(frmTolvek& form, frmFriend& editor, Int16 sort, TextView routine)
{
    if (editor.Loaded()) return;
    const ResumeNext on{routine};
    on([&] { gFriendSort = sort; });
    on([] { gEditCancel = 0; });
    on([&] { editor.ShowModal(&form); });
    if (gEditCancel == 0) takeBook(on, form);
    on([] { gFriendSort = 0; });
    on([&] { form.comMailRead->SetFocus(); });
}

}

void memFriend_A_Click(frmTolvek& form, frmFriend& editor)
{
    editBook(form, editor, 1, u"memFriend_A_Click");
}

void memFriend_F_Click(frmTolvek& form, frmFriend& editor)
{
    editBook(form, editor, 2, u"memFriend_F_Click");
}

void memFriend_P_Click(frmTolvek& form, frmFriend& editor)
{
    editBook(form, editor, 3, u"memFriend_P_Click");
}

}
