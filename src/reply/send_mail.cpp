#include "reply/send_mail.h"

#include "app/database.h"
#include "app/guard.h"
#include "app/sleep_ex.h"
#include "app/state.h"
#include "app/text_routines.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/send_keys.h"
#include "platform/runtime/msg_box.h"
#include "store/subject_keys.h"

namespace tolvek {

namespace {

constexpr int kScreenWait = 100; // milliseconds, while PostPet opens its new-mail screen

struct Reply {
    Text address;
    Text subject; // escaped for the key sender
};

// Kept: always replies to the row's sender, even for the user's own mails, and a
// subject that begins with "Re: " gets a second one.
Reply replyToRow(Int16 row)
{
    gDb = DBEngine::OpenDatabase(gDbPath);
    const SubjectKey& key = SubjectRowLocate(row);
    const Recordset found = gDb.OpenRecordset(
        ofRow(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, key), dbOpenDynaset);
    const Text subject = u"Re: " + trim(found.field(u"tblTolvek_Subject").text());
    Reply reply{key.SndAdd, {}};
    SendKeyEscape(subject, reply.subject);
    gDb.Close();
    return reply;
}

// Brings PostPet to the front and opens its new-mail screen up to the address. Kept:
// the address isn't escaped, so key codes in it act as keys.
void openNewMail(const Text& address)
{
    AppActivate(gPostPetPid);
    // Alt+F, N: PostPet's menu entry for a new mail.
    SendKeys(u"%F");
    SendKeys(u"N");
    SleepEX_Rtn(kScreenWait);
    SendKeys(address + u"{TAB}");
}

// If typing a field fails, tab past it, so that the mail's text arrives without a
// subject. If that fails too, the exception propagates.
void sendOrPass(const Text& keys)
{
    try {
        SendKeys(keys);
    } catch (const std::exception&) {
        SendKeys(u"{TAB}{TAB}");
    }
}

void fillAndPaste(const Text& subject)
{
    sendOrPass(trim(subject) + u"{TAB}{TAB}");
    // Alt+E, J: PostPet's paste command.
    sendOrPass(u"%E");
    sendOrPass(u"J");
}

// Kept: "%E" and "EROR " run together in this message.
void tellNotReached(const RuntimeError& error)
{
    MsgBox(u"%EEROR " + decimal(error.number()) +
           u" SendMail : PostPet 2001 が起動しているか,\r\n"
           u"先ほど起動したPostPetが終了しています。\r\n\r\n"
           u"もう一度,「送信キー」を押してください。");
    gPostPetPid = 0;
}

}

void SendMail(Form& /*form*/, Int16 row, const Text& address, Int16 isReply)
{
    const InputHold hold; // a second reply must not be typed into this one
    Reply mail{address, {}};
    try {
        if (isReply != 0) mail = replyToRow(row);
        openNewMail(mail.address);
    } catch (const std::exception& failure) {
        tellNotReached(asRuntimeError(failure));
        return;
    }
    fillAndPaste(mail.subject);
}

}
