#include "window/status.h"

#include "app/guard.h"
#include "app/settings.h"
#include "app/state.h"
#include "platform/forms/input_hold.h"
#include "platform/runtime/do_events.h"
#include "window/frm_tolvek.h"

#include <functional>
#include <vector>

namespace tolvek {

namespace {

constexpr Colour kRed = 0x000000FF; // 0xBBGGRR
constexpr float kStatusSize = 20;   // points

// Each list holds its controls and menu entries in switching order.
using Switches = std::vector<std::function<void(bool)>>;

template <class... Parts> Switches switchesOf(Parts*... parts)
{
    return {[parts](bool on) { parts->setEnabled(on); }...};
}

void all(const Switches& switches, bool on)
{
    for (const auto& set : switches)
        set(on);
}

Switches everything(frmTolvek& f)
{
    return switchesOf(f.comEnd, f.comMailRead, f.cmdAddrDel, f.comMailDel, f.memFile,
                      f.memDBSupport, f.memOption, f.memHelp_Top, f.comSendMail, f.memBackUp,
                      f.memBackUp_FileEdit, f.lstSubject, f.lstNameOrAddr, f.lblNameOrAddr);
}

Switches changingTheStore(frmTolvek& f)
{
    return switchesOf(f.comMailRead, f.cmdAddrDel, f.comMailDel, f.memDBSupport, f.memOption,
                      f.memBackUp_FileEdit);
}

// memDBSupport isn't included (kept): it can't be reached while memFile is disabled.
Switches duringWork(frmTolvek& f)
{
    return switchesOf(f.comEnd, f.comMailRead, f.cmdAddrDel, f.comMailDel, f.memFile, f.memOption,
                      f.memHelp_Top, f.comSendMail, f.memBackUp, f.memBackUp_FileEdit, f.lstSubject,
                      f.lstNameOrAddr, f.lblNameOrAddr);
}

// When the commands are enabled again, user input waits until the running command has
// ended.
void yieldSwitched(bool off)
{
    if (off) return DoEventsNow();
    const InputHold hold;
    DoEvents();
}

}

void dspEnable(frmTolvek& form, bool enabled, Int16 backupMode)
{
    // Clicks made while the commands were disabled are delivered while they still are.
    // When a long command begins they are delivered after the commands have been
    // disabled.
    const bool begins = !enabled && backupMode != 1;
    if (!begins) DoEventsNow();
    // A list keeps the focus while its own command runs, or the arrow keys would stop
    // working after one step.
    form.KeepFocusDuring([&] {
        all(everything(form), true);
        all(backupMode == 1 ? changingTheStore(form) : duringWork(form), enabled);
    });
    if (!begins) form.SettleFocus();
    yieldSwitched(begins);
}

void dspStatus(frmTolvek& form, bool show, CheckedArray<Text, 6>& lines)
{
    MultiLineTextBox& pane = *form.txtMail;
    if (show) {
        pane.setForeColor(gStatusColorFlag == 0 ? kWindowText : kRed);
        // Kept: the flag isn't reset from one command to the next.
        gStatusColorFlag = gStatusColorFlag == 0 ? 1 : 0;
        pane.setFontSize(kStatusSize);
        pane.setText(u"");
        // Kept: each line follows a line end, so the pane's first line is empty.
        for (const Text& line : lines)
            pane.setText(pane.Text() + Text(kCrLf) + line);
    } else {
        pane.setFontSize(static_cast<float>(gMailTextFontSize));
        pane.setText(u"");
        pane.setForeColor(kWindowText);
        setStatusLines(u"", u"", u"", u"", u"", u"");
    }
    // The caller may now work for seconds without a yield, so the text is painted here.
    // At the beginning of a command the controls are still enabled, hence the hold.
    const InputHold hold;
    DoEventsNow();
}

void emptyMailPane(const ResumeNext& on, frmTolvek& form)
{
    on([&] { form.txtMail->setText({}); });
    on([&] { form.lblHead->setCaption({}); });
}

void emptyLists(const ResumeNext& on, frmTolvek& form)
{
    on([&] { form.lstNameOrAddr->Clear(); });
    on([&] { form.lstSubject->Clear(); });
}

void emptyPanes(const ResumeNext& on, frmTolvek& form)
{
    emptyMailPane(on, form);
    on([&] { form.lstSubject->Clear(); });
}

void endWork(const ResumeNext& on, frmTolvek& form)
{
    on([] { gBusyFlag = 0; });
    on([&] { dspStatus(form, false, gStatusLines); });
    on([&] { dspEnable(form, true, gBackUpDisp); });
}

}
