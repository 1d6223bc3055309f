#include "shell/reply_commands.h"

#include "app/guard.h"
#include "app/state.h"
#include "platform/forms/send_keys.h"
#include "platform/runtime/msg_box.h"
#include "reply/postpet_search.h"
#include "reply/send_mail.h"
#include "window/frm_tolvek.h"

namespace tolvek {

namespace {

bool isMainScreenConfirmed(const ResumeNext& on)
{
    MsgAnswer answer = MsgAnswer::Cancel;
    on([&] { answer = MsgBox(kOtherScreens, MsgButtons::OkCancel); });
    return answer == MsgAnswer::Ok;
}

}

// A failed start is reported, and SendMail runs all the same; it then reports that
// PostPet can't be reached. Kept.
void comSendMail_Click(frmTolvek& form)
{
    const ResumeNext on{u"comSendMail_Click"};
    if (form.lstSubject->SelCount() == 0) return;
    on([&] { form.txtMail->SetFocus(); });
    // The mail text goes to the clipboard, since the reply is made by PostPet's paste
    // command.
    on([] { Clipboard::Clear(); });
    on([&] { Clipboard::SetText(form.txtMail->Text()); });
    on([&] { findPostPet(form); });
    if (gPostPetPid != 0) {
        if (!isMainScreenConfirmed(on)) return;
    } else {
        on([] { startPostPet(); });
    }
    on([&] { SendMail(form, form.lstSubject->ListIndex(), {}, -1); });
}

}
