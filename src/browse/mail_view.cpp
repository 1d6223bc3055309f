#include "browse/mail_view.h"

#include "app/database.h"
#include "app/guard.h"
#include "browse/subject_line.h"
#include "platform/runtime/do_events.h"
#include "store/schema.h"
#include "store/subject_keys.h"
#include "window/frm_tolvek.h"

namespace tolvek {

namespace {

constexpr int kNameColumn = 25; // bytes before the address

void showHeader(frmTolvek& form)
{
    const auto stored = [](TextView name) { return gRs.field(name).text(); };
    form.lblHead->setCaption(
        u"件　名：" + trim(stored(u"tblTolvek_Subject")) + Text(kCrLf) +
        headerLine(u"送信者：", stored(u"tblTolvek_SndName"), stored(u"tblTolvek_SndAdd")));
    form.lblHead->setCaption(
        form.lblHead->Caption() + Text(kCrLf) +
        headerLine(u"受信者：", stored(u"tblTolvek_RcvName"), stored(u"tblTolvek_RcvAdd")));
}

void showText(frmTolvek& form)
{
    for (int i = 1; i <= kMailBlocks; ++i) {
        const Value block = gRs.field(u"tblTolvek_Mail" + decimal(i));
        // Archives of earlier versions may hold Null here.
        if (!block.isNull()) form.txtMail->setText(form.txtMail->Text() + block.text());
    }
}

void showPlace(frmTolvek& form, Int16 row)
{
    form.lblRecCount->setCaption(u"表示件数　：　" + decimal(row + 1) + u" / " +
                                 decimal(gSubjectCount) + u" 件");
    DoEvents();
}

}

Text headerLine(TextView label, const Text& name, const Text& address)
{
    Text line = Text(label) + trim(name);
    padToAnsiLength(line, kNameColumn);
    return line + u"　" + trim(address);
}

void dspMail(frmTolvek& form, Int16 row)
{
    leaveOnError(u"dspMail", [&] {
        gDb = DBEngine::OpenDatabase(gDbPath);
        gRs = gDb.OpenRecordset(ofRow(Statement{u"SELECT * FROM tblTolvek"}, SubjectRowLocate(row)),
                                dbOpenDynaset);
        form.txtMail->setText(u"");
        form.lblHead->setCaption(u"");
        Int16 count = 0;
        GET_RECCNT(gRs, count);
        // A mail may have been deleted or renamed since it was listed; the pane then
        // stays empty.
        if (count != 0) {
            showHeader(form);
            showText(form);
            showPlace(form, row);
        }
        gDb.Close();
    });
}

}
