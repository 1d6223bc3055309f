// The splash window: shown from the first moment of a start until the main window is
// up. It shows that the program is working, and in lblWarning the progress of long
// start-up work.
//
// Its load finds the settings file, so it must be shown before the settings are read.
// It isn't kept on top, since boxes may appear beside it, and the user can't close it.
// Controls are valid while the form is loaded.
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
