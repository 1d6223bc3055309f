// The settings dialog: PostPet's folder, the user's own address, handle and pet name,
// and the font of the mail text. It changes the fields; the file is written at exit.
//
// OK only checks the folder, and only a folder that can't be examined keeps the dialog
// open.
//
// The close box acts like cmbCancel: otherwise a folder that the chooser stored would
// remain, and an empty one ends every later start.
//
// Controls are valid while the form is loaded.
#pragma once
#include "platform/forms/buttons.h"
#include "platform/forms/font_dialog.h"
#include "platform/forms/form.h"
#include "platform/forms/label.h"
#include "platform/forms/text_box.h"

#include <cstdint>

namespace tolvek {

class frmOption : public Form {
public:
    frmOption();

    Label *Label1 = nullptr, *Label2 = nullptr, *Label3 = nullptr, *Label4 = nullptr,
          *Label5 = nullptr;
    TextBox *txtDisp_PetDir = nullptr, *txtMy_Handle = nullptr, *txtMy_Address = nullptr,
            *txtPetName = nullptr;
    CommandButton *cmbOpenPostPet = nullptr, *cmdFontSet = nullptr;
    Label *lblFont = nullptr, *lblFontStyle = nullptr, *lblFontSize = nullptr;
    CommandButton *cmbOK = nullptr, *cmbCancel = nullptr;
    FontDialog cmFont; // reset at each load

protected:
    void buildControls() override;
    void Form_Load() override;
    void Form_QueryUnload(UnloadMode mode) override;

private:
    void buildLabels();
    void buildTextBoxes();
    void buildButtons();
    void connectEvents();

    void showFontLabels();
    void cmbOpenPostPet_Click();
    void cmdFontSet_Click();
    void takeFont();
    void cmbOK_Click();
    bool folderPasses() const;
    void cmbCancel_Click();

    Text oldPostPetDir_;
    Text fontName_;
    std::int32_t fontSize_ = 0;
    Text fontStyle_; // as in gMailTextFontStyle
};

}
