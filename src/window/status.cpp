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

constexpr Colour kRed = 0x000000FF;
constexpr float kStatusSize = 20;

// Each list names its controls and entries in the order of the switching.
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

// memDBSupport isn't among them: it can't be reached while memFile is off.
Switches duringWork(frmTolvek& f)
{
    return switchesOf(f.comEnd, f.comMailRead, f.cmdAddrDel, f.comMailDel, f.memFile, f.memOption,
                      f.memHelp_Top, f.comSendMail, f.memBackUp, f.memBackUp_FileEdit, f.lstSubject,
                      f.lstNameOrAddr, f.lblNameOrAddr);
}

// With commands on again what the user does waits for the running one's end.
void yieldSwitched(bool off)
{
    if (off) return DoEventsNow();
    const InputHold hold;
    DoEvents();
}

}

void dspEnable(frmTolvek& form, bool enabled, Int16 backupMode)
{
    // What was clicked while the commands were off falls on commands still off,
    // and at the beginning of a long command on ones that are off already.
    const bool begins = !enabled && backupMode != 1;
    if (!begins) DoEventsNow();
    Control* const focused = form.ActiveControl();
    all(everything(form), true);
    all(backupMode == 1 ? changingTheStore(form) : duringWork(form), enabled);
    if (focused != nullptr && !focused->Enabled()) form.focusBefore_ = focused;
    if (form.focusBefore_ != nullptr && form.focusBefore_->Enabled()) {
        form.focusBefore_->SetFocus();
        form.focusBefore_ = nullptr;
    }
    yieldSwitched(begins);
}

void dspStatus(frmTolvek& form, bool show, CheckedArray<Text, 6>& lines)
{
    MultiLineTextBox& pane = *form.txtMail;
    if (show) {
        pane.setForeColor(gStatusColorFlag == 0 ? kWindowText : kRed);
        gStatusColorFlag = gStatusColorFlag == 0 ? 1 : 0;
        pane.setFontSize(kStatusSize);
        pane.setText(u"");
        for (const Text& line : lines)
            pane.setText(pane.Text() + Text(kCrLf) + line);
    } else {
        pane.setFontSize(static_cast<float>(gMailTextFontSize));
        pane.setText(u"");
        pane.setForeColor(kWindowText);
        setStatusLines(u"", u"", u"", u"", u"", u"");
    }
    // What follows may be seconds of work without a yield: it is painted here. A
    // command that begins has its controls still on.
    const InputHold hold;
    DoEventsNow();
}

void emptyPanes(const ResumeNext& on, frmTolvek& form)
{
    on([&] { form.txtMail->setText({}); });
    on([&] { form.lblHead->setCaption({}); });
    on([&] { form.lstSubject->Clear(); });
}

void endWork(const ResumeNext& on, frmTolvek& form)
{
    on([] { gBusyFlag = 0; });
    on([&] { dspStatus(form, false, gStatusLines); });
    on([&] { dspEnable(form, true, gBackUpDisp); });
}

}
