// The friend editor: the whole book in a grid, edited in the area above it.
//
// Until the dialog is closed, the edits exist only in the grid. OK writes them to
// Friend.Tmp and empties the table; the caller imports the file again
// (memFriend_*_Click). gEditCancel tells how the dialog was closed: -1 for cmdCancel
// alone; any other way counts as not cancelled. Neither Enter nor Escape presses a
// button.
//
// The dialog must not write what it can't show: when the book couldn't be read
// completely, cmdOK is disabled.
//
// Controls are valid while the form is loaded.
#pragma once
#include "platform/forms/buttons.h"
#include "platform/forms/form.h"
#include "platform/forms/frames.h"
#include "platform/forms/grid.h"
#include "platform/forms/label.h"
#include "platform/forms/text_box.h"
#include "platform/runtime/int16.h"

namespace tolvek {

extern Int16 gFriendRowCnt; // number of grid rows in use; unchanged when the table is empty
extern Int16 gFriendSort;   // 1 address, 2 name, 3 pet while the editor runs, 0 otherwise

class frmFriend : public Form {
public:
    frmFriend();

    Frame* frmFriendEd = nullptr; // the edit area, with the buttons that act on it
    Label *Label1 = nullptr, *Label2 = nullptr, *Label3 = nullptr, *Label4 = nullptr;
    TextBox *txtPetKind = nullptr, *txtPetName = nullptr, *txtName = nullptr, *txtAddress = nullptr;
    CommandButton *cmdFriendAdd = nullptr, *cmdFriendUp = nullptr, *cmdFriendDel = nullptr,
                  *cmdFriendCan = nullptr;
    CommandButton* cmdSndMail = nullptr;
    Grid* grdFriend = nullptr;
    CommandButton *cmdOK = nullptr, *cmdCancel = nullptr;

protected:
    void buildControls() override;
    void Form_Load() override;
    void Form_Resize() override;

private:
    void buildEditArea();
    void buildEditButtons();
    void buildBottom();
    void setTabOrder();
    void connectEvents();

    void FriendLayout();
    void FriendAreaClear();
    void prepareGrid();
    void leaveRow(); // empties the edit area, which then belongs to no row
    void keepEditArea(Int16 row);
    void keepPlacement() const;
    void writeBook() const;

    void grdFriend_Click();
    void cmdFriendAdd_Click();
    void cmdFriendUp_Click();
    void cmdFriendDel_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    Int16 EditRow = -999;  // the grid row that the edit area belongs to, -999 for none
    Int16 EditMailCnt = 0; // mail count of the row clicked last, also in an earlier opening
    Int16 layoutBusy_ = 0; // -1 while FriendLayout runs, which changes the size itself
};

// Fills the form's grid from the table, ordered by gFriendSort. Reports its own
// failures.
void dspFriend(frmFriend& form);

// The mail button: starts a new mail in PostPet. Its own failures are untrapped.
void cmdSndMail_Click(Form& editor, const Text& address);

}
