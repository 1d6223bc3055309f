#include "import/mail_box_read.h"

#include "browse/navigator.h"
#include "dialogs/frm_mail_read_opt.h"
#include "filter/filter_results.h"
#include "friend/ed_friend.h"
#include "friend/friend_names.h"
#include "import/mail_box_table.h"
#include "import/tmp_read.h"
#include "platform/forms/do_events.h"
#include "platform/runtime/paths.h"
#include "shell/base/converter_library.h"
#include "shell/base/frm_tolvek.h"
#include "shell/base/frm_tolvek_work.h"
#include "shell/base/guard.h"
#include "shell/base/settings.h"
#include "shell/base/state.h"
#include "store/search_tables.h"

namespace tolvek {

namespace {

constexpr int kLastOption = 15;

class BoxWalk {
public:
    void readSide(TextView folder, const MailBoxFiles& mainBox,
                  const CheckedArray<Int16, 17>& options, Int16 side)
    {
        if (options[0] == 1) readBox(folder, mainBox, side);
        for (int n = 1; n <= kLastOption; ++n) {
            if (options[n] == 1) readBox(folder, gMailBoxTable[n - 1], side);
            DoEvents();
        }
    }

private:
    // The settings may be changed by hand to choose a row without files: the
    // path then ends in the folder's separator, and the converter refuses it.
    static Text boxPath(TextView folder, TextView file)
    {
        return joinPath(joinPath(trim(gPostPetDir), folder), trim(file));
    }

    void readBox(TextView folder, const MailBoxFiles& files, Int16 side)
    {
        gStatusLines[4] = Text(folder) + u"   " + trim(files.mail);
        Int16 count = 0;
        converterLibrary().Tolvek_Edit(boxPath(folder, files.list), boxPath(folder, files.mail),
                                       joinPath(appPath(), u"Tolvek.Tmp"), count, status_);
        if (status_ == 0 && count != 0) tmpRead(side, side, count);
    }

    // Not set before each call: a converter that writes no status leaves the
    // previous box's, and one box that can't be read then stops those behind it.
    Int16 status_ = 0;
};

void chooseMailBoxes(frmTolvek& form)
{
    frmMailReadOpt dialog;
    dialog.ShowModal(&form);
}

// The status text goes up first and the pane is emptied right behind it; the
// next tick of the clock brings it back.
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

void MailBoxRead()
{
    BoxWalk walk;
    walk.readSide(kReceiveFolder, kReceiveMainBox, gRecievMailReadOption, 0);
    walk.readSide(kSendFolder, kSendMainBox, gSendMailReadOption, -1);
}

void comMailRead_Click(frmTolvek& form)
{
    const ResumeNext on{u"comMailRead_Click"};
    on([&] { chooseMailBoxes(form); });
    if (gMailReadCancel == -1) return;
    beginReading(on, form);
    // First, so that new friends' names are there when their mails come in.
    on([] { edFriend(); });
    on([] { MailBoxRead(); });
    updateData(on, form);
    endWork(on, form);
    on([&] { form.comMailRead->SetFocus(); });
}

}
