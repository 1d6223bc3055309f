// The commands of the main window around the friend book.
#pragma once

namespace tolvek {

class frmTolvek;
class frmFriend;

// All names anew, and what is derived from them.
void memFriendEd_Click(frmTolvek& form);
// The selected mail's correspondent into the book, and then all names anew.
void memAddressAdd_Click(frmTolvek& form);

// The editor, sorted by address, by name, by pet; on anything but Cancel its
// file is read back in and all names are set anew.
void memFriend_A_Click(frmTolvek& form, frmFriend& editor);
void memFriend_F_Click(frmTolvek& form, frmFriend& editor);
void memFriend_P_Click(frmTolvek& form, frmFriend& editor);

}
