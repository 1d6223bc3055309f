// The choice of the mail boxes to read, asked before each read of mail.
//
// The ticks are kept in gSendMailReadOption and gRecievMailReadOption, and so from run
// to run. Only 4 and 10 of their elements have a check box; the others are never
// changed. gMailReadCancel tells how the dialog was closed: -1 for Cancel, Escape and
// the close box, 0 for OK.
//
// Controls are valid while the form is loaded.
#pragma once
#include "platform/forms/buttons.h"
#include "platform/forms/form.h"
#include "platform/forms/frames.h"
#include "platform/forms/label.h"
#include "platform/runtime/int16.h"

namespace tolvek {

class frmMailReadOpt : public Form {
public:
    frmMailReadOpt();

    Label* lblPostPetFlder = nullptr;
    Frame* Frame2 = nullptr; // the send side
    Frame* Frame1 = nullptr; // the receive side
    CheckedArray<CheckBox*, 4> Chk_Send_Opt;
    CheckedArray<CheckBox*, 10> Chk_Reciev_Opt;
    CommandButton* cmbMail_Ok = nullptr;
    CommandButton* cmbMail_Cancel = nullptr;

protected:
    void buildControls() override;
    void Form_Load() override;
    void Form_QueryUnload(UnloadMode mode) override;

private:
    void buildFrames();
    void buildButtons();
    void cmbMail_Ok_Click();
    void cmbMail_Cancel_Click();
    bool nothingTicked() const;
};

}
