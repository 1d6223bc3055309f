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
#include "shell/base/report_watch.h"
#include "shell/base/settings.h"
#include "shell/base/state.h"
#include "store/search_tables.h"

namespace tolvek {

namespace {

constexpr int kLastOption = 15;

struct BoxSide {
    TextView folder;
    const MailBoxFiles& mainBox;
    const CheckedArray<Int16, 17>& options;
    Int16 flag;

    // Element 0 is the main box.
    bool isChosen(int element) const { return options[element] == 1; }
    const MailBoxFiles& files(int element) const
    {
        return element == 0 ? mainBox : gMailBoxTable[element - 1];
    }
    // The settings may be changed by hand to choose a row without files: the
    // path then ends in the folder's separator, and the converter refuses it.
    Text path(TextView file) const
    {
        return joinPath(joinPath(trim(gPostPetDir), folder), trim(file));
    }
};

Text tempPath()
{
    return joinPath(appPath(), u"Tolvek.Tmp");
}

// Drawers have longer names than main boxes: a folder that is too deep would
// fail in the middle of the walk.
void requirePaths(const BoxSide& side)
{
    const auto& required = converterLibrary().requirePath;
    if (!required) return;
    for (int element = 0; element <= kLastOption; ++element) {
        if (!side.isChosen(element)) continue;
        const MailBoxFiles& files = side.files(element);
        for (const Text& path : {side.path(files.list), side.path(files.mail), tempPath()})
            required(path);
    }
}

class BoxWalk {
public:
    void readSide(const BoxSide& side)
    {
        readBox(side, 0);
        for (int element = 1; element <= kLastOption; ++element) {
            readBox(side, element);
            DoEvents();
        }
    }

private:
    void readBox(const BoxSide& side, int element)
    {
        if (!side.isChosen(element) || reports_.lasting()) return;
        const MailBoxFiles& files = side.files(element);
        gStatusLines[4] = Text(side.folder) + u"   " + trim(files.mail);
        Int16 count = 0;
        converterLibrary().Tolvek_Edit(side.path(files.list), side.path(files.mail), tempPath(),
                                       count, status_);
        if (status_ == 0 && count != 0) tmpRead(side.flag, side.flag, count);
    }

    const ReportWatch reports_;
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
    const BoxSide receive{kReceiveFolder, kReceiveMainBox, gRecievMailReadOption, 0};
    const BoxSide send{kSendFolder, kSendMainBox, gSendMailReadOption, -1};
    requirePaths(receive);
    requirePaths(send);
    BoxWalk walk;
    walk.readSide(receive);
    walk.readSide(send);
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
