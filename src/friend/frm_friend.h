// The friend editor: the whole book in a grid, edited in the area above it.
//
// The grid is the only copy until the dialog is closed. OK writes it to
// Friend.Tmp and empties the table; whoever shows the form reads the file back
// in (memFriend_*_Click). How the dialog was left stands in gEditCancel: -1 for
// cmdCancel alone, any other way of closing it counts as not cancelled. Neither
// Enter nor Escape presses a button.
//
// What the dialog can't show it must not write: when the book can't be read to
// its end, cmdOK stays off.
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

extern Int16 gFriendRowCnt; // grid rows that count, 1 to gFriendRowCnt; an empty table leaves it
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
    void leaveRow(); // empties the edit area, which belongs to no row then
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
    Int16 EditMailCnt = 0; // of the row last clicked, in whatever opening that was
    Int16 layoutBusy_ = 0; // -1 while FriendLayout runs, which changes the size itself
};

// Fills the form's grid from the table in the order of gFriendSort. Reports its
// own failures.
void dspFriend(frmFriend& form);

// The mail button: a new mail in PostPet. Its own failures are untrapped.
void cmdSndMail_Click(Form& editor, const Text& address);

}
