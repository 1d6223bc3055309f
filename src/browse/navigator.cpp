#include "browse/navigator.h"

#include "app/guard.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/subject_list.h"
#include "platform/forms/input_hold.h"
#include "platform/runtime/do_events.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

namespace tolvek {

namespace {

struct DisplayType {
    TextView caption, deleteCaption, deleteTip;
    void (*list)(frmTolvek&);
};

constexpr DisplayType kDisplayTypes[] = {
    {u"アドレス　表示", u"アドレス　削除", u"選択されているアドレスを削除します", dspSearch_Addr},
    {u"送受信者名　表示", u"名前　削除", u"選択されている名前のメールを削除します", dspSearch_Name},
    {u"日付　表示", u"日付　削除", u"選択されている日付のメールを削除します", dspSearch_Date},
    {u"フィルター　表示", u"フィルター　削除", u"選択されている抽出条件のメールを削除します",
     dspSearch_Filter},
};
constexpr int kFilterType = 3;

const DisplayType& displayType()
{
    return kDisplayTypes[isFilterView() ? kFilterType : int(gDisplayType)];
}

void nameDeletion(frmTolvek& form)
{
    form.cmdAddrDel->setCaption(Text(displayType().deleteCaption));
    form.cmdAddrDel->setToolTipText(Text(displayType().deleteTip));
}

}

bool isFilterView()
{
    return gDisplayType < 0 || gDisplayType >= kFilterType;
}

void dspNavigator(frmTolvek& form)
{
    form.lblNameOrAddr->setCaption(Text(displayType().caption));
    displayType().list(form);
}

// Kept: of the routines that fill the navigator, only this one and dspSearch_Date clear
// the mail pane; the count label stays.
void dspSelData(frmTolvek& form)
{
    ResumeNext on{u"dspSelData"};
    emptyPanes(on, form);
    on([&] { dspNavigator(form); });
    on([&] { nameDeletion(form); });
}

void lblNameOrAddr_Click(frmTolvek& form)
{
    ResumeNext on{u"lblNameOrAddr_Click"};
    on([&] { dspEnable(form, false, 0); });
    on([&] { form.txtMail->setText(u""); });
    on([&] { form.lblHead->setCaption(u""); });
    on([&] { form.lstSubject->Clear(); });
    // Any value outside the known ones starts over with addresses.
    on([&] {
        gDisplayType = gDisplayType >= 0 && gDisplayType < kFilterType ? gDisplayType + 1 : 0;
    });
    on([&] { dspNavigator(form); });
    on([&] { nameDeletion(form); });
    on([&] { dspEnable(form, gBackUpDisp != 1, gBackUpDisp); });
}

void memNameOrAddr_Click(frmTolvek& form)
{
    ResumeNext on{u"memNameOrAddr_Click"};
    on([&] { lblNameOrAddr_Click(form); });
    on([&] { form.comMailRead->SetFocus(); });
}

// Kept quirks: the test for 3 is exact, so with an unknown value the list shows filters
// but a click is handled as a date. The commands are re-enabled even for a backup;
// selecting the last subject disables them again, if there is one.
void lstNameOrAddr_Click(frmTolvek& form)
{
    ResumeNext on{u"lstNameOrAddr_Click"};
    on([&] {
        setStatusLines(u"データベースの", u"　　内容を読み込んでいます。", u"",
                       u"　　　少々お待ちください。", u"", u"");
    });
    on([&] { gBusyFlag = -1; });
    on([&] { dspStatus(form, true, gStatusLines); });
    on([&] { dspEnable(form, false, 0); });
    on([&] {
        if (gDisplayType != kFilterType)
            dspSubject(form, form.lstNameOrAddr->Text());
        else
            dspSubject_Filter(form, form.lstNameOrAddr->ListIndex());
    });
    endWork(on, form);
    on([&] {
        if (form.lstSubject->ListCount() >= 1) {
            // Fires the click event, which shows the last mail.
            form.lstSubject->setListIndex(form.lstSubject->ListCount() - 1);
            const InputHold hold; // the commands are enabled
            DoEvents();
        }
    });
}

}
