// The version dialog, with a button that starts the system's information tool.
#pragma once
#include "platform/forms/buttons.h"
#include "platform/forms/form.h"
#include "platform/forms/frames.h"
#include "platform/forms/label.h"

namespace tolvek {

class frmTolvek;

class frmAbout : public Form {
public:
    frmAbout();

    Label *lblVersion = nullptr, *lblDescription = nullptr, *lblDisclaimer = nullptr;
    CommandButton *cmdOK = nullptr, *cmdSysInfo = nullptr;

protected:
    void buildControls() override;
    void Form_Load() override;
};

// The command of the main window that shows it.
void memVar_Click(frmTolvek& form);

}
