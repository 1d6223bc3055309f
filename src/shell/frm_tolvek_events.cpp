#include "shell/frm_tolvek_events.h"

#include "app/file_names.h"
#include "app/file_routines.h"
#include "app/program_end.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "browse/subject_list.h"
#include "dialogs/frm_about.h"
#include "dialogs/frm_option.h"
#include "filter/filter_rules.h"
#include "friend/ed_friend.h"
#include "friend/friend_book_file.h"
#include "import/mail_box_read.h"
#include "platform/forms/events.h"
#include "platform/forms/shortcut.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "shell/backup_commands.h"
#include "shell/delete_commands.h"
#include "shell/dialog_commands.h"
#include "shell/filter_commands.h"
#include "shell/friend_commands.h"
#include "shell/letters_command.h"
#include "shell/read_command.h"
#include "shell/reply_commands.h"
#include "shell/store_commands.h"
#include "shell/win_help.h"
#include "window/frm_tolvek.h"
#include "window/settings_window.h"
#include "window/status.h"

namespace tolvek {

namespace {

void clearState(const ResumeNext& on)
{
    on([] { gStatusColorFlag = 0; });
    on([] { gBusyFlag = 0; });
    on([] { gResizeBusy = 0; });
    on([] { gUnloading = 0; });
    on([] { gBackUpDisp = 0; });
    on([] { gPostPetPid = 0; });
    on([] { gNonCopyRuleCnt = 0; });
}

// Kept: all *.tmp files are deleted if one of the program's own is among them,
// otherwise none.
void removeTempFiles()
{
    const bool ours = FileNameCheck(joinPath(appPath(), kFriendTempName)) != 0 ||
                      FileNameCheck(joinPath(appPath(), kMailTempName)) != 0;
    if (ours) kill(joinPath(appPath(), u"*.tmp"));
}

// Each unload removes a form from the list, so the search starts over.
void unloadOthers(const Form& form)
{
    while (Forms::Count() > 1) {
        int index = 0;
        while (&Forms::item(index) == &form)
            ++index;
        Forms::item(index).Unload();
    }
}

}

void frmTolvekEvents::buildControls()
{
    frmTolvek::buildControls();
    connectEvents();
    connectStoreMenus();
    connectFriendMenus();
    connectOtherMenus();
}

void frmTolvekEvents::connectEvents()
{
    onEvent(comMailRead, &CommandButton::Click, [this] { comMailRead_Click(*this); });
    onEvent(comMailDel, &CommandButton::Click, [this] { comMailDel_Click(*this); });
    onEvent(cmdAddrDel, &CommandButton::Click, [this] { cmdAddrDel_Click(*this); });
    onEvent(comSendMail, &CommandButton::Click, [this] { comSendMail_Click(*this); });
    onEvent(comEnd, &CommandButton::Click, [this] { comEnd_Click(); });
    onEvent(lblNameOrAddr, &Label::Click, [this] { lblNameOrAddr_Click(*this); });
    onEvent(lstNameOrAddr, &ListBox::Click, [this] { lstNameOrAddr_Click(*this); });
    onEvent(lstSubject, &ListBox::Click, [this] { lstSubject_Click(*this); });
    onEvent(lstSubject, &ListBox::RightButton, [this](QPoint pos) { lstSubject_RightButton(pos); });
    onEvent(Timer1, &Timer::Tick, [this] { Timer1_Timer(); });
}

void frmTolvekEvents::connectStoreMenus()
{
    onEvent(memExport, &MenuEntry::Click, [this] { memExport_Click(*this); });
    onEvent(memInport, &MenuEntry::Click, [this] { memInport_Click(*this); });
    onEvent(memDBEdit, &MenuEntry::Click, [this] { memDBEdit_Click(*this); });
    onEvent(memEnd, &MenuEntry::Click, [this] { memEnd_Click(); });
    onEvent(memBackUp_FileEdit, &MenuEntry::Click, [this] { memBackUp_FileEdit_Click(*this); });
    onEvent(memBackUp_FileSelect, &MenuEntry::Click, [this] { memBackUp_FileSelect_Click(*this); });
    onEvent(memNomalDisp, &MenuEntry::Click, [this] { memNomalDisp_Click(*this); });
}

void frmTolvekEvents::connectFriendMenus()
{
    onEvent(memFriend_F, &MenuEntry::Click, [this] { memFriend_F_Click(*this, friendEditor_); });
    onEvent(memFriend_P, &MenuEntry::Click, [this] { memFriend_P_Click(*this, friendEditor_); });
    onEvent(memFriend_A, &MenuEntry::Click, [this] { memFriend_A_Click(*this, friendEditor_); });
    onEvent(memAddressAdd, &MenuEntry::Click, [this] { memAddressAdd_Click(*this); });
    onEvent(memFriendEd, &MenuEntry::Click, [this] { memFriendEd_Click(*this); });
}

void frmTolvekEvents::connectOtherMenus()
{
    onEvent(memNameOrAddr, &MenuEntry::Click, [this] { memNameOrAddr_Click(*this); });
    onEvent(memFilter, &MenuEntry::Click, [this] { memFilter_Click(*this, filterEditor_); });
    onEvent(memFilterGo, &MenuEntry::Click, [this] { memFilterGo_Click(*this); });
    onEvent(memEnv, &MenuEntry::Click, [this] { memEnv_Click(*this); });
    onEvent(memHelp, &MenuEntry::Click, [this] { memHelp_Click(); });
    onEvent(memVar, &MenuEntry::Click, [this] { memVar_Click(*this); });
    // Belongs to the window; it has no entry in a menu.
    onEvent(new Shortcut(*this, Qt::CTRL | Qt::Key_F), &Shortcut::Pressed,
            [this] { findLetters(*this); });
}

void frmTolvekEvents::Form_Initialize()
{
    const ResumeNext on{u"Form_Initialize"};
    on([this] { iniRead(*this); });
    askForSettings(on);
    on([] { fillMonthNames(); });
    on([] { fillMailBoxTable(); });
    clearPanes(on);
    applyMailFont(*this, on, FlagText::WithComma);
    clearState(on);
    on([this] { dspSelData(*this); });
    on([] { completeFriendEdit(); }); // before the library overwrites Friend.Tmp
    on([] { edFriend(); });
    // Last, since listing filter views leaves only sorting rules in memory.
    on([] { tblFilter_Get(); });
}

// An empty address marks a first start.
void frmTolvekEvents::askForSettings(const ResumeNext& on)
{
    if (!trim(gMyMailAddr).empty()) return;
    on([] { MsgBox(u"あなたのＰＣの環境を設定してください。"); });
    on([this] { frmOption().ShowModal(this); });
    applyMailFont(*this, on, FlagText::WithComma);
    on([] { DoEventsNow(); });
}

void frmTolvekEvents::clearPanes(const ResumeNext& on)
{
    emptyLists(on, *this);
    emptyMailPane(on, *this);
    on([this] { lblRecCount->setCaption({}); });
}

void frmTolvekEvents::comEnd_Click()
{
    const ResumeNext on{u"comEnd_Click"};
    on([this] { memEnd_Click(); });
}

void frmTolvekEvents::memEnd_Click()
{
    const ResumeNext on{u"memEnd_Click"};
    on([this] { Unload(); });
    on([] { endProgram(); });
}

// The unload inside enters it again; the second time only the temp files are looked
// for.
void frmTolvekEvents::Form_Unload()
{
    const ResumeNext on{u"Form_Unload"};
    on([] { removeTempFiles(); });
    if (gUnloading == -1) return;
    on([] { gUnloading = -1; });
    on([this] { iniWrite(*this); });
    on([this] { unloadOthers(*this); });
    on([this] { Unload(); });
    on([] { endProgram(); });
}

void frmTolvekEvents::memHelp_Click()
{
    const ResumeNext on{u"memHelp_Click"};
    on([this] { WinHelpA(window(), joinPath(appPath(), u"Tolvek.hlp"), HELP_INDEX, 0); });
}

void frmTolvekEvents::lstSubject_RightButton(const QPoint& pos)
{
    const ResumeNext on{u"lstSubject_MouseDown"};
    on([&] { PopupMenu(*memOption, lstSubject->viewport()->mapToGlobal(pos)); });
}

// This keeps long work visibly alive: while a command yields, its status text blinks
// and the clock advances.
void frmTolvekEvents::Timer1_Timer()
{
    const ResumeNext on{u"Timer1_Timer"};
    on([this] { lblDate->setCaption(formatDate(now())); });
    on([this] { lblDate->setCaption(lblDate->Caption() + u"  " + formatTime(now())); });
    on([] { DoEvents(); });
    if (gBusyFlag == -1) on([this] { dspStatus(*this, true, gStatusLines); });
}

}
