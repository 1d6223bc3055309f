#include "shell/read_command.h"

#include "app/guard.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "dialogs/frm_mail_read_opt.h"
#include "filter/filter_results.h"
#include "friend/ed_friend.h"
#include "friend/friend_names.h"
#include "import/mail_box_read.h"
#include "store/search_tables.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

namespace tolvek {

namespace {

void chooseMailBoxes(frmTolvek& form)
{
    frmMailReadOpt dialog;
    dialog.ShowModal(&form);
}

// Kept order: the status text is shown, then the pane is emptied at once; the next
// timer tick brings the text back.
void beginReading(const ResumeNext& on, frmTolvek& form)
{
    on([] {
        setStatusLines(u"ＰｏｓｔＰｅｔ の ", u"　Ｍａｉｌを読み込んでいます。",
                       u"　少々お待ちください。", u"", u"", u"");
    });
    on([] { gBusyFlag = -1; });
    on([&] { dspStatus(form, true, gStatusLines); });
    emptyPanes(on, form);
    on([&] { dspEnable(form, false, 0); });
}

void updateData(const ResumeNext& on, frmTolvek& form)
{
    on([] {
        setStatusLines(u"", u"　Ｔｏｌｖｅｋの各データを", u"　　　更新しています。",
                       u"　少々お待ちください。", u"", u"");
    });
    on([] { edFriendName(); });
    on([] { edSearch_Name(); });
    on([] { edSearch_Addr(); });
    on([] { tblFilterData_Sel(); });
    on([&] { dspNavigator(form); });
}

}

void comMailRead_Click(frmTolvek& form)
{
    const ResumeNext on{u"comMailRead_Click"};
    on([&] { chooseMailBoxes(form); });
    if (gMailReadCancel == -1) return;
    beginReading(on, form);
    // First, so that the names of new friends are known when their mails are read.
    on([] { edFriend(); });
    ReadAccount account;
    on([&] { MailBoxRead(account); });
    updateData(on, form);
    endWork(on, form);
    on([&] { form.comMailRead->SetFocus(); });
    writeReadAccount(account);
}

}
