// The main window: its controls, its layout rule, the switching of its commands
// and the status text. What the lists show and what the commands do belongs to
// the folders above; their events are wired in src/shell.
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
#include "shell/base/state.h"

namespace tolvek {

class ResumeNext;

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
    Control* focusBefore_ = nullptr; // taken by a disabling, given back by the enabling
};

// Switches the commands: all on, then some (backupMode 1: those that change the
// store; any other: nearly all) to `enabled`, then one yield; with commands on it
// keeps the user's input back. A control that lost the focus by it gets it back.
void dspEnable(frmTolvek& form, bool enabled, Int16 backupMode);

// The mail pane as progress display: six lines in large type, black and red in
// turn at each call. show false: empty, the mail's own font and colour again,
// and the lines emptied. Yields, with the user's input kept back.
void dspStatus(frmTolvek& form, bool show, CheckedArray<Text, 6>& lines);

// Size, face, bold and italic of the mail text from the settings, each a
// statement of its caller's routine: a style whose flag is no number is error
// 13 for that flag alone. How much of the style is read for a flag is the
// caller's: the start takes the comma with it, the settings command doesn't.
enum class FlagText { WithComma, Alone };
void applyMailFont(frmTolvek& form, const ResumeNext& on, FlagText flag);

}
