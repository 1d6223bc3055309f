// The choice of a backup file: lists every database file beside the program except the
// live one. The choice goes to gBackUpFile, "" for Cancel; the close box leaves it
// unchanged.
//
// Controls are valid while the form is loaded.
#pragma once
#include "platform/forms/buttons.h"
#include "platform/forms/form.h"
#include "platform/forms/list_box.h"

#include <vector>

namespace tolvek {

class frmBackUpFile : public Form {
public:
    // Centred over the main window at each load.
    explicit frmBackUpFile(const Form& main);

    ListBox* lstBackUpFile = nullptr;
    CommandButton *cmdOK = nullptr, *cmdCancel = nullptr;

protected:
    void buildControls() override;
    void Form_Load() override;

private:
    void cmdOK_Click();
    void cmdCancel_Click();

    const Form& main_;
    std::vector<Text> names_; // in list order
};

}
