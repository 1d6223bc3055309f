#include "shell/delete_commands.h"

#include "app/guard.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/delete_mail.h"
#include "browse/navigator.h"
#include "browse/subject_list.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "platform/runtime/msg_box.h"
#include "shell/confirmation.h"
#include "store/search_tables.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

namespace tolvek {

namespace {

// By display type; the last one is for filter views.
constexpr TextView kQuestions[] = {
    u"選択されているアドレスのメールを削除します",
    u"選択されている方のメールを削除します",
    u"選択されている日付のメールを削除します",
    u"選択されている抽出条件のメールを削除します",
};

// Kept quirk: line feed before carriage return. Enter answers No.
bool isDeletionConfirmed(const ResumeNext& on, TextView question)
{
    return isConfirmed(on, Text(question) + u"\n\r     よろしいでしょうか？", MsgAnswer::No);
}

void showStatus(const ResumeNext& on, frmTolvek& form)
{
    on([] {
        setStatusLines(u"Ｔｏｌｖｅｋ の ", u"　データベースを整理しています。",
                       u"　少々お待ちください。", u"", u"", u"");
    });
    on([] { gBusyFlag = -1; });
    on([&] { dspStatus(form, true, gStatusLines); });
}

// Nothing is selected in the refilled navigator, so its text is empty and the subject
// list becomes empty as well.
void relist(const ResumeNext& on, frmTolvek& form)
{
    on([] { tblFilter_Get(); });
    on([] { tblFilterData_Sel(); });
    on([&] { dspSelData(form); });
    on([&] { dspSubject(form, form.lstNameOrAddr->Text()); });
}

void endDeleting(const ResumeNext& on, frmTolvek& form)
{
    endWork(on, form);
    on([&] { form.comMailRead->SetFocus(); });
}

void deleteEntry(frmTolvek& form)
{
    if (isFilterView())
        // The row is the index of the rule; see navigator.h.
        delFilter(form.lstNameOrAddr->ListIndex());
    else
        delMail(gDisplayType, form.lstNameOrAddr->Text());
}

}

void comMailDel_Click(frmTolvek& form)
{
    const ResumeNext on{u"comMailDel_Click"};
    if (form.lstSubject->SelCount() == 0) return;
    if (!isDeletionConfirmed(on, u"選択されているメールを削除します")) return;
    showStatus(on, form);
    on([&] { dspEnable(form, false, 0); });
    emptyMailPane(on, form);
    on([&] { delOneMail(form.lstSubject->ListIndex()); });
    relist(on, form);
    endDeleting(on, form);
}

// Kept: unlike above, the mails are deleted before the status text appears.
void cmdAddrDel_Click(frmTolvek& form)
{
    const ResumeNext on{u"cmdAddrDel_Click"};
    if (form.lstNameOrAddr->SelCount() == 0) return;
    if (!isDeletionConfirmed(on, kQuestions[isFilterView() ? 3 : int(gDisplayType)])) return;
    on([&] { dspEnable(form, false, 0); });
    on([&] { deleteEntry(form); });
    showStatus(on, form);
    emptyMailPane(on, form);
    on([&] { form.lstSubject->Clear(); });
    on([] { edSearch_Name(); });
    on([] { edSearch_Addr(); });
    relist(on, form);
    endDeleting(on, form);
}

}
