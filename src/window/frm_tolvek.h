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

class ResumeNext;

class frmTolvek : public Form {
public:
    frmTolvek();

    CommandButton *comMailRead = nullptr, *cmdAddrDel = nullptr, *comMailDel = nullptr,
                  *comSendMail = nullptr, *comEnd = nullptr;
    Label *lblRecCount = nullptr, *lblDate = nullptr, *lblNameOrAddr = nullptr, *lblHead = nullptr;
    ListBox *lstNameOrAddr = nullptr, *lstSubject = nullptr;
    MultiLineTextBox* txtMail = nullptr;
    Line* Line1 = nullptr;
    Timer* Timer1 = nullptr;

    MenuEntry *memFile = nullptr, *memDBSupport = nullptr, *memExport = nullptr,
              *memInport = nullptr, *memSp1 = nullptr, *memDBEdit = nullptr, *memsp2 = nullptr,
              *memEnd = nullptr;
    MenuEntry *memBackUp = nullptr, *memBackUp_FileEdit = nullptr, *memsp5 = nullptr,
              *memNomalDisp = nullptr, *memBackUp_FileSelect = nullptr;
    MenuEntry *memOption = nullptr, *memFriend = nullptr, *memFriend_F = nullptr,
              *memFriend_P = nullptr, *memFriend_A = nullptr, *memAddressAdd = nullptr,
              *memFriendEd = nullptr;
    MenuEntry *memsp3 = nullptr, *memFilter = nullptr, *memFilterGo = nullptr, *memsp4 = nullptr,
              *memEnv = nullptr, *memNameOrAddr = nullptr;
    MenuEntry *memHelp_Top = nullptr, *memHelp = nullptr, *memsp999 = nullptr, *memVar = nullptr;

protected:
    void buildControls() override;
    void Form_Resize() override;

private:
    void buildButtons();
    void buildLists();
    void buildLabels();
    void buildMenus();
};

// Applies size, face, bold and italic from the settings to the mail text. Each is a
// statement of the caller's routine: a flag that is no number is error 13 for that flag
// alone. The caller chooses how many characters of the style are parsed for a flag: at
// start-up the comma is included, in the settings command it isn't.
enum class FlagText { WithComma, Alone };
void applyMailFont(frmTolvek& form, const ResumeNext& on, FlagText flag);

}
