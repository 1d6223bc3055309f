// The main window: its controls and its layout rule. The contents of the lists belong
// to src/browse; the commands and the event wiring are in src/shell.
//
// Controls are valid while the form is loaded.
#pragma once
#include "platform/forms/buttons.h"
#include "platform/forms/form.h"
#include "platform/forms/frames.h"
#include "platform/forms/label.h"
#include "platform/forms/list_box.h"
#include "platform/forms/menu.h"
#include "platform/forms/text_box.h"
#include "platform/forms/timer.h"
#include "platform/runtime/int16.h"

namespace tolvek {

class frmTolvek : public Form {
public:
    frmTolvek();

    CommandButton *comMailRead, *cmdAddrDel, *comMailDel, *comSendMail, *comEnd;
    Label *lblRecCount, *lblDate, *lblNameOrAddr, *lblHead;
    ListBox *lstNameOrAddr, *lstSubject;
    MultiLineTextBox* txtMail;
    Line* Line1;
    Timer* Timer1;

    MenuEntry *memFile, *memDBSupport, *memExport, *memInport, *memSp1, *memDBEdit, *memsp2,
        *memEnd;
    MenuEntry *memBackUp, *memBackUp_FileEdit, *memsp5, *memNomalDisp, *memBackUp_FileSelect;
    MenuEntry *memOption, *memFriend, *memFriend_F, *memFriend_P, *memFriend_A, *memAddressAdd,
        *memFriendEd;
    MenuEntry *memsp3, *memFilter, *memFilterGo, *memsp4, *memEnv, *memNameOrAddr;
    MenuEntry *memHelp_Top, *memHelp, *memsp999, *memVar;

protected:
    void buildControls() override;
    void Form_Resize() override;

private:
    void buildButtons();
    void buildLists();
    void buildLabels();
    void buildMenus();

    friend void dspEnable(frmTolvek& form, bool enabled, Int16 backupMode);
    Control* focusBefore_ = nullptr; // lost its focus by being disabled; gets it back when enabled
};

}
