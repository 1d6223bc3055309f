// The window of a start: it stands from the first moment until the main window
// is up, says that something is going on, and carries the progress lines of
// long start-up work in lblWarning.
//
// Its load finds the settings file: whoever reads the settings shows it first.
// It isn't kept on top, since boxes may come up beside it, and its user can't
// close it. Controls are valid while the form is loaded.
#pragma once
#include "platform/forms/form.h"
#include "platform/forms/frames.h"
#include "platform/forms/label.h"
#include "platform/forms/timer.h"
#include "platform/runtime/int16.h"

namespace tolvek {

class frmSplash : public Form {
public:
    frmSplash();

    Frame* fraMainFrame = nullptr;
    PictureBox *Image1 = nullptr, *Image2 = nullptr;
    Label *lblProductName = nullptr, *lblVersion = nullptr, *lblPlatform = nullptr;
    Label *lblWait = nullptr, *lblWarning = nullptr;
    Label *lblCopyright1 = nullptr, *lblCopyright2 = nullptr;
    Timer* Timer1 = nullptr;

protected:
    void buildControls() override;
    void Form_Load() override;

private:
    void buildPictures();
    void buildLabels();
    void Timer1_Timer();

    Int16 blinkFlag_; // -1: lblWait turns blue at the next tick, 0: black
};

}
