// The folder chooser of the settings dialog: drive and directory lists and a
// box for the path. It checks nothing; whoever shows it reads gPostPetDir.
#pragma once
#include "platform/forms/buttons.h"
#include "platform/forms/dir_lists.h"
#include "platform/forms/form.h"
#include "platform/forms/label.h"
#include "platform/forms/text_box.h"

namespace tolvek {

class frmDir_Sel : public Form {
public:
    frmDir_Sel();

    Label* lbl_1 = nullptr;
    DriveListBox* Div1 = nullptr;
    DirListBox* Dir1 = nullptr;
    TextBox* txtPet_Dir = nullptr;
    CommandButton *cmbOK = nullptr, *cmbCancel = nullptr;

protected:
    void buildControls() override;
    void Form_Load() override;
};

}
