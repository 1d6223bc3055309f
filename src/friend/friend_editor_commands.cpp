#include "friend/friend_book_file.h"
#include "friend/friend_commands.h"
#include "friend/frm_friend.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/frm_tolvek_work.h"
#include "shell/base/guard.h"
#include "shell/base/state.h"

namespace tolvek {

namespace {

// memFriendEd_Click sets the commands on again.
void takeBook(const ResumeNext& on, frmTolvek& form)
{
    emptyPanes(on, form);
    on([] { gBusyFlag = -1; });
    on([&] { dspEnable(form, false, 0); });
    on([] { readFriendTmp(); });
    on([&] { memFriendEd_Click(form); });
}

// A second choice of the menu while the editor is open does nothing.
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
