// The two buttons that lead to PostPet.
#include "platform/forms/msg_box.h"
#include "platform/forms/send_keys.h"
#include "reply/send_mail.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/guard.h"

namespace tolvek {

namespace {

// PostPet takes the keys in whatever screen it shows; this box is all that
// keeps them from another one than the main screen.
constexpr TextView kOtherScreens = u"PostPetのメイン画面以外が開いているとエラーになります。\r\n"
                                   u"メイン画面以外は終了してください。\r\n\r\n"
                                   u"準備が出来たら「ＯＫ」を押して下さい。";

bool isMainScreenConfirmed(const ResumeNext& on)
{
    MsgAnswer answer = MsgAnswer::Cancel;
    on([&] { answer = MsgBox(kOtherScreens, MsgButtons::OkCancel); });
    return answer == MsgAnswer::Ok;
}

}

// A failed start is told and leads on to SendMail, which then tells that there
// is no PostPet to be reached.
void comSendMail_Click(frmTolvek& form)
{
    const ResumeNext on{u"comSendMail_Click"};
    if (form.lstSubject->SelCount() == 0) return;
    on([&] { form.txtMail->SetFocus(); });
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

// The clipboard isn't touched: what stands on it is what PostPet's paste brings.
void cmdSndMail_Click(Form& editor, const Text& address)
{
    const Text receiver = trim(address);
    if (receiver.empty()) return;
    findPostPet(editor);
    if (gPostPetPid != 0)
        MsgBox(kOtherScreens);
    else
        startPostPet();
    SendMail(editor, 0, receiver, 0);
}

}
