// The version dialog, with a button that starts the system's information tool.
//
// A new object is made for each opening. Enter and Escape press OK. Controls are valid
// while the form is loaded.
#pragma once
#include "platform/forms/buttons.h"
#include "platform/forms/form.h"
#include "platform/forms/frames.h"
#include "platform/forms/label.h"
#include "platform/runtime/int16.h"

namespace tolvek {

class frmAbout : public Form {
public:
    frmAbout();

    Label *lblVersion = nullptr, *lblDescription = nullptr, *lblDisclaimer = nullptr;
    CheckedArray<Line*, 2> Line1; // the rule below the description: the light line, the dark line
    CommandButton *cmdOK = nullptr, *cmdSysInfo = nullptr;

protected:
    void buildControls() override;
    void Form_Load() override;

private:
    void buildLabels();
    void buildButtons();
    void layRules();
};

}
