// The folder chooser of the settings dialog: drive and directory lists, and a box for
// the path. It checks nothing; the caller reads gPostPetDir.
//
// It starts at the first drive, whatever gPostPetDir is. Kept: changing the drive
// stores its folder at once, and Cancel doesn't undo that, so the caller must save the
// previous value. The close box stores nothing.
//
// Controls are valid while the form is loaded.
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

private:
    void makeControls();
    void placeControls();
    void connectEvents();
    void Div1_Change();
    void Dir1_Change();
    void cmbOK_Click();
    void cmbCancel_Click();
};

}
