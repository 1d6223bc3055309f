// The main window's commands for the friend book.
#pragma once

namespace tolvek {

class frmTolvek;
class frmFriend;

// Writes the book's names over all mails and rebuilds what is derived from them.
void memFriendEd_Click(frmTolvek& form);
// Adds the selected mail's correspondent to the book, then does the same.
void memAddressAdd_Click(frmTolvek& form);

// Shows the editor, sorted by address, by name or by pet. Unless it was cancelled, its
// file is read back in and all names are set again.
void memFriend_A_Click(frmTolvek& form, frmFriend& editor);
void memFriend_F_Click(frmTolvek& form, frmFriend& editor);
void memFriend_P_Click(frmTolvek& form, frmFriend& editor);

}
