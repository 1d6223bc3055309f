#include "shell/store_commands.h"

#include "app/database.h"
#include "app/guard.h"
#include "app/reports.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "filter/filter_rules.h"
#include "friend/ed_friend.h"
#include "platform/dao/alone.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "shell/confirmation.h"
#include "store/before_load.h"
#include "store/table_create.h"
#include "store/text_dump.h"
#include "store/text_dump_set.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

namespace tolvek {

namespace {

void begin(const ResumeNext& on, frmTolvek& form, TextView first, TextView second, TextView third,
           TextView fourth)
{
    on([&] { dspEnable(form, false, 0); });
    on([&] { setStatusLines(first, second, third, fourth, u"", u""); });
    on([] { gBusyFlag = -1; });
    on([&] { dspStatus(form, true, gStatusLines); });
}

void unLoad(const ResumeNext& on, frmTolvek& form)
{
    emptyMailPane(on, form);
    begin(on, form, u"データベースの", u"　　内容を書き出しています", u"",
          u"　　　少々お待ちください。");
    on([] { dbUnLoad(); });
    endWork(on, form);
}

void load(const ResumeNext& on, frmTolvek& form)
{
    emptyLists(on, form);
    emptyMailPane(on, form);
    begin(on, form, u"書き出した内容をデータベースに", u"　　読み込んでします。", u"",
          u"　　　少々お待ちください。");
    on([] { dbLoad(); });
    on([&] { dspNavigator(form); });
    // A loaded friend table may lack friends that PostPet's book has.
    on([] { edFriend(); });
    endWork(on, form);
}

// Kept: the rules in memory stay until they are read again, and success is reported
// whatever was answered.
void rebuild(const ResumeNext& on, frmTolvek& form)
{
    emptyLists(on, form);
    emptyMailPane(on, form);
    begin(on, form, u"データベースを作り直しています。", u"", u"　　　少々お待ちください。", u"");
    on([] { Table_Create(); });
    endWork(on, form);
    on([] { MsgBox(u"ＤＢの作成が正常終了しました。", MsgButtons::Ok, u"Tolvek"); });
}

void unLoadTables()
{
    tblTolvek_UnLoad();
    tblSearch_Addresses_UnLoad();
    tblSearch_Name_UnLoad();
    DoEvents();
    tblFriend_UnLoad();
    DoEvents();
    tblFilter_UnLoad();
    DoEvents();
    tblFilterData_UnLoad();
    DoEvents();
}

void loadTables()
{
    tblTolvek_Load();
    tblSearch_Addresses_Load();
    tblSearch_Name_Load();
    DoEvents();
    tblFriend_Load();
    DoEvents();
    tblFilter_Load();
    DoEvents();
    tblFilterData_Load();
    DoEvents();
}

}

void memExport_Click(frmTolvek& form)
{
    const ResumeNext on{u"memExport_Click"};
    if (isConfirmed(on, u"Ｔｏｌｖｅｋ　の　データを退避います。\r\n\r\n     よろしいでしょうか？",
                    MsgAnswer::Yes))
        unLoad(on, form);
    on([&] { form.comMailRead->SetFocus(); });
}

void memInport_Click(frmTolvek& form)
{
    const ResumeNext on{u"memInport_Click"};
    if (isConfirmed(on,
                    u"Ｔｏｌｖｅｋ　の　ＤＢ　へ　セーブデータからデータを挿入します。\r\n\r\n"
                    u"     よろしいでしょうか？",
                    MsgAnswer::No))
        load(on, form);
    on([&] { form.comMailRead->SetFocus(); });
}

void memDBEdit_Click(frmTolvek& form)
{
    const ResumeNext on{u"memDBEdit_Click"};
    if (isConfirmed(on,
                    u"ＰｏａｔＰｅｔ　Ｍａｉｌ　ＤＢ　の　再作成を行います。\r\n\r\n"
                    u"     今までのデータは全て無くなります。\r\n\r\n     よろしいでしょうか？",
                    MsgAnswer::No))
        rebuild(on, form);
    on([&] { form.comMailRead->SetFocus(); });
}

void dbUnLoad()
{
    settleTextFiles();
    const ReportWatch reports;
    {
        // The dumps are written under side names and replace the old ones only when all
        // six are complete.
        const UnLoadBeside beside;
        unLoadTables();
    }
    leavePlainOnError(u"memExport_Click", [&] {
        if (reports.any())
            dropNewTextFiles();
        else
            exchangeTextFiles();
    });
    MsgBox(u"メール履歴ＤＢのＵｎＬＯＡＤ（DB → TextFile）が終了しました。");
}

// Being alone with the file keeps others from storing a mail between the copy and the
// deletion that a load begins with.
void dbLoad()
{
    const Alone alone(gDbPath);
    settleTextFiles();
    // Without dump files nothing is deleted, and no copy is needed.
    const Text copy = hasTextFiles() ? beginLoad(gDbPath) : Text();
    alone.confirm();
    const ReportWatch reports;
    loadTables();
    // The copy replaces an older one only after a load without errors.
    if (!copy.empty()) endLoad(copy, reports.any());
    MsgBox(u"メール履歴ＤＢのＬＯＡＤ（TextFile → DB）が終了しました。");
}

}
