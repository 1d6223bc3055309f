#include "shell/backup_commands.h"

#include "app/database.h"
#include "app/file_names.h"
#include "app/file_routines.h"
#include "app/guard.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "dialogs/frm_backup_file.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "friend/friend_names.h"
#include "platform/dao/alone.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "shell/confirmation.h"
#include "store/database_files.h"
#include "store/db_compress.h"
#include "store/search_tables.h"
#include "store/spoilt_texts.h"
#include "window/frm_tolvek.h"
#include "window/status.h"

#include <optional>

namespace tolvek {

namespace {

// Both backup commands report under this name; kept.
constexpr TextView kRoutine = u"memBackUp_FileEdit_Click";
constexpr TextView kCaption = u"PostPet Mail 表示";

Text todaysPath()
{
    const DateTime today = now();
    return joinPath(appPath(), backUpName(format(today.year, u"0000") + format(today.month, u"00") +
                                          format(today.day, u"00")));
}

// Once a day: an existing file of that name is never overwritten, whoever made it.
bool isFirstToday(const PassOver53& steps, const Text& backUp)
{
    if (FileNameCheck(backUp) == 0) return true;
    steps([] {
        MsgBox(u"今日はすでに１回バックアップを実行しています。\r\n"
               u"バックアップは，１日１回しか出来ません。");
    });
    return false;
}

bool beginBackUp(const PassOver53& steps, frmTolvek& form)
{
    return steps([&] { dspEnable(form, false, 0); }, [&] { form.txtMail->setText({}); },
                 [&] { form.lblHead->setCaption({}); }, [&] { form.lstSubject->Clear(); },
                 [] {
                     setStatusLines(u"", u"　Ｔｏｌｖｅｋの各データを", u"　　　更新しています。",
                                    u"　少々お待ちください。", u"", u"");
                 },
                 [] { gBusyFlag = -1; }, [&] { dspStatus(form, true, gStatusLines); });
}

// Files are renamed here, so nothing may be open; gDb may be, after a question that was
// declined. Being alone with the file keeps others from storing a mail between the copy
// and the deletion. The second compaction either leaves a complete, flushed file or
// fails with an error other than 53, so no row is deleted before every mail is in the
// backup.
bool moveMails(const PassOver53& steps, const Text& backUp)
{
    std::optional<Alone> alone;
    return steps(
        [] { gDbPath = liveDatabasePath(); }, [] { gDb.Close(); }, [] { dbCompress(gDbPath); },
        [&] { alone.emplace(gDbPath); }, [&] { DBEngine::CompactDatabase(gDbPath, backUp); },
        [] { gWs = DBEngine::Workspaces(0); }, [] { gDb = DBEngine::OpenDatabase(gDbPath); },
        // The file that was copied must be the one that is emptied.
        [&] { alone->confirm(); },
        [] { executeInTransaction(Statement{u"DELETE FROM tblFilterData"}); },
        [] { executeInTransaction(Statement{u"DELETE FROM tblTolvek"}); },
        [] { executeInTransaction(Statement{u"DELETE FROM tblSearch_Addresses"}); },
        [] { executeInTransaction(Statement{u"DELETE FROM tblSearch_Name"}); },
        [] { gDb.Close(); });
}

// The same steps as after every change of the mails; here no mail is left.
bool rebuildLists(const PassOver53& steps)
{
    return steps(DoEvents, edFriendName, DoEvents, edSearch_Name, DoEvents, edSearch_Addr, DoEvents,
                 tblFilterData_Sel);
}

bool endBackUp(const PassOver53& steps, frmTolvek& form)
{
    return steps([&] { dspNavigator(form); }, [] { gBusyFlag = 0; },
                 [&] { dspStatus(form, false, gStatusLines); },
                 [&] { dspEnable(form, true, gBackUpDisp); });
}

}

void memBackUp_FileEdit_Click(frmTolvek& form)
{
    const PassOver53 steps{kRoutine};
    // The backup removes the mails from the live store, so Enter answers No.
    if (!isConfirmed(steps, u"メールをバックします。\r\n     よろしいでしょうか？", MsgAnswer::No))
        return;
    Text backUp;
    if (!steps([&] { backUp = todaysPath(); }) || !isFirstToday(steps, backUp)) return;
    beginBackUp(steps, form) && moveMails(steps, backUp) && rebuildLists(steps) &&
        endBackUp(steps, form);
}

// The displayed store changes before the commands know about it. They stay disabled
// while the lists are filled and yield, or a read of mail could go into the backup.
void memBackUp_FileSelect_Click(frmTolvek& form)
{
    const ResumeNext on{kRoutine};
    frmBackUpFile dialog(form);
    on([] { gBackUpFile.clear(); });
    on([&] { dialog.ShowModal(&form); });
    // The close box leaves the name empty too, since it was cleared before.
    if (trim(gBackUpFile).empty()) return;
    on([&] { dspEnable(form, false, 0); });
    on([&] { form.setCaption(Text(kCaption) + u" （ ﾊﾞｯｸｱｯﾌﾟ ﾌｧｲﾙ : " + gBackUpFile + u" ）"); });
    on([] { gDbPath = joinPath(appPath(), gBackUpFile); });
    on([&] { dspSelData(form); });
    on([] { gBackUpDisp = 1; });
    on([&] { dspEnable(form, false, 1); });
    on(reportSpoiltTexts);
}

// Listing the backup's rules has replaced the rules in memory. They are read again, or
// the next filter run would use the backup's.
void memNomalDisp_Click(frmTolvek& form)
{
    const ResumeNext on{u"memNomalDisp_Click"};
    on([&] { dspEnable(form, false, 0); });
    on([&] { form.setCaption(kCaption); });
    on([] { gDbPath = liveDatabasePath(); });
    on([&] { dspSelData(form); });
    on([] { tblFilter_Get(); });
    on([] { gBackUpDisp = 0; });
    on([&] { dspEnable(form, true, gBackUpDisp); });
}

}
